// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KeptWhileLoaded.h - values that are made on first use and live until the library is unloaded.
//
//     static const platform::KeptWhileLoaded<Table> table(makeTable());
//     use(*table);
//
// They are not destroyed when the process ends: the destructor of a global, an atexit handler or a thread of the host
// may still compute then. They are destroyed when the library is unloaded from a process that goes on (dlclose,
// FreeLibrary), so that a host may load and unload the library as often as it likes.
#pragma once

#include <new>
#include <utility>

namespace platform {

/// An action that runs when the library is unloaded, the newest first. It never runs when the process ends.
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

/// Called once, by whoever is told that the library is unloaded from a process that goes on.
void runUnloadActions() noexcept;

/// A static variable whose value is destroyed by an OnUnload action instead of at the end of the process.
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
