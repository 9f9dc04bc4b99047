-- SPDX-FileCopyrightText: 2026 The mathexpr authors
-- SPDX-License-Identifier: MIT
--
-- use_cdef.lua CDEF - a host in LuaJIT: a value, an error with its place, a name from the host, an array.
local ffi = require("ffi")
ffi.cdef(assert(io.open(arg[1])):read("*a"))
local library = ffi.load("libmathexpr.so.1")
local C = library

assert(library.mathexpr_abi_version() == C.MATHEXPR_ABI_VERSION)

local function make(options)
    local handle = ffi.new("mathexpr_expression*[1]")
    assert(library.mathexpr_create_utf8(options, handle) == C.MATHEXPR_OK)
    return ffi.gc(handle[0], library.mathexpr_destroy)
end

local function compile(expression, text)
    return library.mathexpr_set_expression_utf8(expression, text, #text)
end

local expression = make(nil)
local value = ffi.new("mathexpr_value")
assert(compile(expression, "[1,2,0]+[3,4,0]") == C.MATHEXPR_OK)
assert(library.mathexpr_evaluate(expression, value) == C.MATHEXPR_OK)
print(value.x, value.y, value.z)

print(compile(expression, "1 + sine(30)") == C.MATHEXPR_PARSING_ERROR)
local diagnostic = ffi.new("mathexpr_diagnostic_utf8")
diagnostic.size = ffi.sizeof(diagnostic)
assert(library.mathexpr_get_diagnostic_utf8(expression, diagnostic) == C.MATHEXPR_OK)
print(tonumber(diagnostic.start), tonumber(diagnostic.length), ffi.string(diagnostic.suggestions[0]))

local options = ffi.new("mathexpr_options_utf8")
options.size = ffi.sizeof(options)
options.lookup = ffi.cast("mathexpr_lookup_utf8", function(_, name, length, answer)
    if ffi.string(name, length) ~= "width" then return C.MATHEXPR_LOOKUP_NOT_KNOWN end
    answer.x = 2.5
    return C.MATHEXPR_LOOKUP_FOUND
end)
local asking = make(options)
assert(compile(asking, "width*2") == C.MATHEXPR_OK)
assert(library.mathexpr_evaluate(asking, value) == C.MATHEXPR_OK)
print(value.x)
