// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetTree.h - the structure of an expression, grouped as by the compiler. Brackets that only group are omitted.
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
        Words,      ///< Set upright and verbatim, such as a unit.
        Construct,  ///< Set by its form.
    };

    Kind kind = Kind::Construct;
    std::wstring text;                  ///< Of a construct: the function's name, or a verbatim text.
    const TypesetForm* form = nullptr;  ///< Of a construct.
    std::vector<std::uint32_t> parts;   ///< Of a construct: indices of its parts.
};

struct TypesetTree
{
    std::vector<TypesetNode> nodes;  ///< The last is the root. Parts precede the nodes that contain them.
};

/// Builds the tree; for a text that is not an expression, a single node with the text.
TypesetTree readTypesetTree(const TextReading& reading, const MTParserRegistrar& registrar);

}
