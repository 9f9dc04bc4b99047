// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetTree.h - what an expression consists of, grouped as the compiler groups it. Brackets that only group are not in
// the tree.
#pragma once

#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/TypesetForms.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mathexpr::editor {

struct TypesetNode
{
    enum class Kind : std::uint8_t
    {
        Number,
        Constant,
        Name,
        Words,      ///< Set in upright letters as they are, such as a unit.
        Construct,  ///< By its form.
    };

    Kind kind = Kind::Construct;
    std::wstring text;                  ///< Of a construct: the name of a function, or what is set verbatim.
    const TypesetForm* form = nullptr;  ///< Of a construct.
    std::vector<std::uint32_t> parts;   ///< Of a construct: indices of other nodes.
};

struct TypesetTree
{
    std::vector<TypesetNode> nodes;  ///< The last is the root. Parts come before what they are parts of.
};

/// Of a text that is no expression, one node with the text.
TypesetTree readTypesetTree(const TextReading& reading, const MTParserRegistrar& registrar);

}
