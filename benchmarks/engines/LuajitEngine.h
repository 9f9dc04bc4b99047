// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LuajitEngine.h - LuaJIT as an engine: a formula is a function that reads its variables through a pointer, without a
// call in machine code.
#pragma once

#include "benchmarks/Formulas.h"

#include <lua.hpp>

#include <stdexcept>
#include <string>

class LuajitEngine
{
public:
    using Slot = double;
    using Text = std::string;
    static constexpr const char* name = "luajit";

    LuajitEngine() : state(luaL_newstate())
    {
        luaL_openlibs(state);
        lua_pushlightuserdata(state, values.data());
        lua_setglobal(state, "address");
        run("values = require('ffi').cast('double*', address)\n"
            "sqrt, sin, cos, min, max, abs = math.sqrt, math.sin, math.cos, math.min, math.max, math.abs\n"
            "function m2f(x) return x*10000/3048 end\n"
            "function f2m(x) return x*0.3048 end\n");
    }
    LuajitEngine(const LuajitEngine&) = delete;
    LuajitEngine& operator=(const LuajitEngine&) = delete;
    ~LuajitEngine() { lua_close(state); }

    double* slot(const Component& component) { return &values[component.index]; }

    void prepare(const Formula& formula)
    {
        std::string text = "local values = values\n"
                           "local sqrt, sin, cos, min, max, abs = sqrt, sin, cos, min, max, abs\n"
                           "local m2f, f2m = m2f, f2m\n"
                           "return function()\n" +
                           variableText(formula.variables);
        if (!formula.scalar.shared.empty())
        {
            text += "local len = " + formula.scalar.shared + "\n";
        }
        text += "return ";
        if (!formula.lua.empty())
        {
            text += formula.lua;
        }
        else
        {
            for (const std::string& part : formula.scalar.parts)
            {
                // In brackets, since LuaJIT does not compile a tail call to machine code.
                text += (&part == &formula.scalar.parts.front() ? "(" : ",(") + part + ")";
            }
        }
        run(text + " end");
    }

    static Text textOf(const Formula& formula)
    {
        return variableText(formula.variables) + "return " + (formula.lua.empty() ? formula.text : formula.lua);
    }

    static Text textOf(const std::string& text) { return variableText("x") + "return " + text; }

    static double oneShot(const Text& text)
    {
        LuajitEngine engine;
        engine.compile(text);
        return engine.number();
    }

    static void construct() { LuajitEngine object; }

    void compile(const Text& text)
    {
        lua_settop(state, 0);
        check(luaL_loadbuffer(state, text.data(), text.size(), "formula"));
    }

    double number()
    {
        lua_pushvalue(state, 1);
        lua_call(state, 0, 1);
        const double result = lua_tonumber(state, -1);
        lua_settop(state, 1);
        return result;
    }

    Point point()
    {
        lua_pushvalue(state, 1);
        lua_call(state, 0, 3);
        const Point result{lua_tonumber(state, -3), lua_tonumber(state, -2), lua_tonumber(state, -1)};
        lua_settop(state, 1);
        return result;
    }

private:
    /// Code that reads the variables into locals of the same names.
    static std::string variableText(const std::string& variables)
    {
        std::string text;
        for (const Component& component : componentsOf(variables))
        {
            text += "local " + std::string(component.name) + " = values[" + std::to_string(component.index) + "]\n";
        }
        return text;
    }

    /// Runs a chunk; only its return values remain on the stack.
    void run(const std::string& text)
    {
        compile(text);
        check(lua_pcall(state, 0, LUA_MULTRET, 0));
    }

    void check(int status)
    {
        if (status != 0)
        {
            throw std::runtime_error(lua_tostring(state, -1));
        }
    }

    lua_State* state;
    Scalars values{};
};
