// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextReading.h - reads a typed text into tokens, as the compiler reads the text that it is rewritten to.
#pragma once

#include "MTParserLib/MTParser.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/TextTokens.h"
#include "mathexpr/hints/KnownNames.h"

#include <string>
#include <string_view>
#include <vector>

namespace mathexpr::editor {

class TextReading
{
public:
    /// @param typed  outlives the reading
    TextReading(const MathExpression& expression, std::wstring_view typed);

    std::wstring_view typed() const noexcept { return text; }
    const std::vector<TextToken>& tokens() const noexcept { return all; }
    const KnownNames& names() const noexcept { return known; }

    /// The characters of a token without blanks between them.
    std::wstring textOf(const TextToken& token) const;

private:
    const std::wstring_view text;
    const KnownNames known;
    std::vector<TextToken> all;
};

/// Empty for null.
std::wstring_view viewOf(const wchar_t* text) noexcept;

/// Whether the object's limit forbids to look at a text of that length.
bool isTooLong(const MathExpression& expression, std::size_t length) noexcept;

inline std::uint32_t endOf(const TextToken& token) noexcept
{
    return token.start + token.length;
}

inline TextSpan spanOf(const TextToken& token) noexcept
{
    return {token.start, token.length};
}

/// Whether the token is a name that stands for a value and is not the language's own.
bool isRenamable(const TextToken& token) noexcept;

/// Those that are no blanks, by their indices.
std::vector<std::size_t> withoutBlanks(const std::vector<TextToken>& tokens);

/// Whether an operand has to follow: an operator there is unary.
/// @param reading, before  the token before the place; at the beginning there is none
bool expectsOperand(const TextReading& reading, const TextToken& before);

}
