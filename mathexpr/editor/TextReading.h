// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextReading.h - splits a typed text into tokens, as the compiler splits the rewritten text.
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
    /// @param typed  must outlive this object
    TextReading(const MathExpression& expression, std::wstring_view typed);

    std::wstring_view typed() const noexcept { return text; }
    const std::vector<TextToken>& tokens() const noexcept { return all; }
    const KnownNames& names() const noexcept { return known; }

    /// The characters of a token without the blanks between them.
    std::wstring textOf(const TextToken& token) const;

private:
    const std::wstring_view text;
    const KnownNames known;
    std::vector<TextToken> all;
};

/// The empty text for null.
std::wstring_view viewOf(const wchar_t* text) noexcept;

/// Whether a text of this length exceeds the object's limit.
bool isTooLong(const MathExpression& expression, std::size_t length) noexcept;

inline std::uint32_t endOf(const TextToken& token) noexcept
{
    return token.start + token.length;
}

inline TextSpan spanOf(const TextToken& token) noexcept
{
    return {token.start, token.length};
}

/// Whether the token names a value and is not part of the language.
bool isRenamable(const TextToken& token) noexcept;

/// Indices of the tokens that are not blanks.
std::vector<std::size_t> withoutBlanks(const std::vector<TextToken>& tokens);

/// Whether an operand must follow, so that an operator here would be unary.
/// @param reading, before  the reading, and the token before the position; there is none at the start of the text
bool expectsOperand(const TextReading& reading, const TextToken& before);

}
