// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ArrayView.h - a non-owning view of contiguous elements: a pointer and a count, like std::span of C++20.
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace platform {

template <class Element>
class ArrayView
{
public:
    constexpr ArrayView() noexcept = default;
    constexpr ArrayView(Element* elements, std::size_t count) noexcept : elements(elements), count(count) {}

    /// From an array, a vector or another view.
    template <class Container, class = std::enable_if_t<
                                   std::is_convertible_v<decltype(std::data(std::declval<Container&>())), Element*>>>
    constexpr ArrayView(Container&& container) noexcept : elements(std::data(container)), count(std::size(container))
    {}

    constexpr Element* data() const noexcept { return elements; }
    constexpr std::size_t size() const noexcept { return count; }
    constexpr bool empty() const noexcept { return count == 0; }
    constexpr Element* begin() const noexcept { return elements; }
    constexpr Element* end() const noexcept { return elements + count; }
    constexpr Element& operator[](std::size_t index) const noexcept { return elements[index]; }

    constexpr ArrayView first(std::size_t number) const noexcept { return {elements, number}; }
    constexpr ArrayView subspan(std::size_t offset) const noexcept { return {elements + offset, count - offset}; }

private:
    Element* elements = nullptr;
    std::size_t count = 0;
};

template <class Container>
ArrayView(Container&&) -> ArrayView<std::remove_pointer_t<decltype(std::data(std::declval<Container&>()))>>;

}
