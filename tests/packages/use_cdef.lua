-- SPDX-FileCopyrightText: 2026 The mathexpr authors
-- SPDX-License-Identifier: MIT
--
-- use_cdef.lua CDEF - a host in LuaJIT: a value, an error with its position, a name from the host, an array.
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

-- One expression over arrays in LuaJIT's memory; the third row divides by zero.
local row_count = 4
local function column(name, values)
    local data = ffi.new("double[?]", row_count, values)
    assert(library.mathexpr_set_variable_utf8(expression, name, #name, value, nil) == C.MATHEXPR_OK)
    return ffi.new("mathexpr_column_utf8", {
        size = ffi.sizeof("mathexpr_column_utf8"),
        kind = C.MATHEXPR_NUMBERS,
        name = name,
        name_length = #name,
        data = data,
        stride = ffi.sizeof("double"),
    }), data  -- which the record alone does not keep alive
end
local area, areas = column("area", { 1, 6, 5, 8 })
local width, widths = column("width", { 2, 4, 0, 16 })
local columns = ffi.new("mathexpr_column_utf8[2]", { area, width })
local quotients = ffi.new("double[?]", row_count)
local row_status = ffi.new("uint32_t[?]", row_count)
local results = ffi.new("mathexpr_results", {
    size = ffi.sizeof("mathexpr_results"),
    kind = C.MATHEXPR_NUMBERS,
    data = quotients,
    stride = ffi.sizeof("double"),
    row_status = row_status,
})
local outcome = ffi.new("mathexpr_bulk_outcome")
outcome.size = ffi.sizeof(outcome)
assert(compile(expression, "area/width") == C.MATHEXPR_OK)
assert(library.mathexpr_evaluate_bulk_utf8(expression, columns, 2, row_count, results, 2, outcome) == C.MATHEXPR_OK)
for row = 0, row_count - 1 do
    print(areas[row], widths[row], quotients[row] == quotients[row] and quotients[row] or "no value", row_status[row])
end
print(tonumber(outcome.failed_count), tonumber(outcome.first_failed), outcome.first_status)
