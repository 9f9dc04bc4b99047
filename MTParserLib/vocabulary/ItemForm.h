// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ItemForm.h - detects at compile time what a class of the vocabulary declares.
//
//     template <class Item>
//     using Square = decltype(Item::square(0.0));
//
//     if constexpr (hasForm<Square, Item>)  // Item has a static member function square that takes a number
#pragma once

#include <type_traits>

template <template <class> class Form, class Item, class = void>
inline constexpr bool hasForm = false;
template <template <class> class Form, class Item>
inline constexpr bool hasForm<Form, Item, std::void_t<Form<Item>>> = true;
