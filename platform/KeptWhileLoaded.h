// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KeptWhileLoaded.h - values created on first use that live until the library is unloaded.
//
//     static const platform::KeptWhileLoaded<Table> table(makeTable());
//     use(*table);
//
// They are not destroyed at the end of the process, since the destructor of a global, an atexit handler or a host
// thread may still compute then. They are destroyed when the library is unloaded and the process continues (dlclose,
// FreeLibrary), so a host may load and unload the library any number of times.
#pragma once

#include <new>
#include <utility>

namespace platform {

/// An action that runs when the library is unloaded, in reverse order of registration. It does not run at the end of
/// the process.
class OnUnload
{
public:
    using Action = void (*)(void* context) noexcept;

    OnUnload(Action action, void* context) noexcept;
    OnUnload(const OnUnload&) = delete;
    OnUnload& operator=(const OnUnload&) = delete;
    ~OnUnload() = default;

private:
    friend void runUnloadActions() noexcept;

    const Action action;
    void* const context;
    const OnUnload* next;
};

/// Call once when the library is unloaded and the process continues.
void runUnloadActions() noexcept;

/// A static variable whose value is destroyed by an OnUnload action, not at the end of the process.
template <class Value>
class KeptWhileLoaded
{
public:
    template <class... Arguments>
    explicit KeptWhileLoaded(Arguments&&... arguments)
        : value(::new (static_cast<void*>(memory)) Value(std::forward<Arguments>(arguments)...)),
          destruction([](void* object) noexcept { static_cast<Value*>(object)->~Value(); }, value)
    {}

    Value& operator*() const noexcept { return *value; }

private:
    alignas(Value) unsigned char memory[sizeof(Value)];
    Value* const value;
    const OnUnload destruction;
};

}
