// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Editor.cpp - implements mathexpr_editor.h: converts positions to code units of the encoding, and keeps results in the
// expression.
#include "mathexpr/EditorServices.h"

#include "mathexpr/c/DescribedDiagnostic.h"
#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"
#include "mathexpr/c/Values.h"

#include <deque>
#include <memory>
#include <optional>

namespace {

// The numbers are those of the C++ enumerations.
static_assert(MATHEXPR_TOKEN_OTHER == static_cast<std::uint32_t>(mathexpr::TokenKind::Other));
static_assert(MATHEXPR_RENAME_READ_OTHERWISE == static_cast<std::uint32_t>(mathexpr::RenameRefusal::ReadOtherwise));
static_assert(MATHEXPR_TYPING_WRONG == static_cast<std::uint32_t>(mathexpr::TypingState::Wrong));
static_assert(MATHEXPR_NOTATION_MATHML == static_cast<std::uint32_t>(mathexpr::Notation::MathMl));
static_assert(MATHEXPR_VALUE_EITHER == static_cast<std::uint32_t>(mathexpr::ValueKind::Either));

/// Converts positions to code units of an encoding. Moving to a later position takes time proportional to the distance.
template <class Encoding>
class UnitCounter
{
public:
    explicit UnitCounter(std::wstring_view countedText) : text(countedText) {}

    std::size_t unitsBefore(std::size_t index)
    {
        if (index < counted)
        {
            counted = 0;
            units = 0;
        }
        units += Encoding::encode(text.substr(counted, index - counted)).size();
        counted = index;
        return units;
    }

    mathexpr_span spanOf(mathexpr::TextSpan span)
    {
        const std::size_t start = unitsBefore(span.start);
        return {start, unitsBefore(std::size_t{span.start} + span.length) - start};
    }

private:
    const std::wstring_view text;
    std::size_t counted = 0;
    std::size_t units = 0;
};

/// A result, and the texts and arrays that it points to.
template <class Encoding, class Element = char>
struct KeptAnswer
{
    const typename Encoding::Unit* keep(std::wstring_view text)
    {
        return texts.emplace_back(Encoding::encode(text)).c_str();
    }

    const Element* data() const noexcept { return elements.empty() ? nullptr : elements.data(); }

    std::deque<typename Encoding::Text> texts;
    std::deque<TextList<Encoding>> lists;
    std::vector<Element> elements;
};

/// Calls work with the expression and the text if they and the result structure are valid.
template <class Encoding, class Answer, class Work>
mathexpr_status serve(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                      const Answer* answer, Work work) noexcept
{
    return readExpression(handle, [&](mathexpr_expression& expression) -> mathexpr_status {
        if (answer == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!hasPlausibleSize(answer))
        {
            return MATHEXPR_BAD_SIZE;
        }
        if (expression.host->isAskedForNames)
        {
            return MATHEXPR_BUSY;
        }
        std::wstring typed;
        const mathexpr_status status = takeText<Encoding>(text, length, typed);
        if (status != MATHEXPR_OK)
        {
            return status;
        }
        const Mark asked(expression.host->isAskedForNames);
        return work(expression, typed);
    });
}

/// Writes a result and stores the data that it points to. Releases the data of this function's previous result.
template <class Encoding, class Answer, class Kept>
mathexpr_status answerWith(mathexpr_expression& expression, const Answer& known, Answer* given,
                           std::shared_ptr<Kept> kept)
{
    static const char function = 0;  // identifies the function by its type of result
    expression.template answers<Encoding>().ofEditor[&function] = std::move(kept);
    writeStructure(known, given);
    return MATHEXPR_OK;
}

/// Writes a list of the stored elements. Its structure has a size, a reserved field, the elements and their number.
template <class Encoding, class List, class Kept>
mathexpr_status answerWithList(mathexpr_expression& expression, List* given, std::shared_ptr<Kept> kept)
{
    const List known{0, 0, kept->data(), kept->elements.size()};
    return answerWith<Encoding>(expression, known, given, std::move(kept));
}

bool readQuestions(std::uint32_t flags, mathexpr::HostQuestions& questions) noexcept
{
    questions = flags == 0 ? mathexpr::HostQuestions::Forbidden : mathexpr::HostQuestions::Allowed;
    return flags <= MATHEXPR_MAY_ASK_HOST;
}

/// The cursor in characters of the wide text.
std::uint32_t toWideCursor(std::string_view text, std::size_t cursor)
{
    std::size_t at = std::min(cursor, text.size());
    while (at != 0 && at != text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80)
    {
        --at;
    }
    return static_cast<std::uint32_t>(platform::toWide(text.substr(0, at)).size());
}

std::uint32_t toWideCursor(std::u16string_view text, std::size_t cursor)
{
    std::size_t at = std::min(cursor, text.size());
    if (at != 0 && at != text.size() && (text[at] & 0xFC00) == 0xDC00)
    {
        --at;
    }
    return static_cast<std::uint32_t>(platform::toWide(text.substr(0, at)).size());
}

/// @param typed  the same text; if the given one is zero-terminated, only its encoded length is used
template <class Encoding>
std::uint32_t wideCursor(const std::wstring& typed, std::size_t cursor)
{
    const typename Encoding::Text encoded = Encoding::encode(typed);
    return toWideCursor(std::basic_string_view<typename Encoding::Unit>(encoded), cursor);
}

template <class Encoding>
mathexpr_status getTokens(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                          mathexpr_tokens* tokens) noexcept
{
    return serve<Encoding>(
        handle, text, length, tokens,
        [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
            auto kept = std::make_shared<KeptAnswer<Encoding, mathexpr_token>>();
            UnitCounter<Encoding> units(typed);
            for (const mathexpr::TextToken& token : mathexpr::getTokens(expression.object(), typed.c_str()))
            {
                const mathexpr_span span = units.spanOf({token.start, token.length});
                const std::size_t partner = token.partner == mathexpr::noPartner ? MATHEXPR_NO_PARTNER : token.partner;
                kept->elements.push_back(
                    {static_cast<std::uint32_t>(token.kind), token.depth, span.start, span.length, partner});
            }
            return answerWithList<Encoding>(expression, tokens, std::move(kept));
        });
}

template <class Encoding>
struct KeptFormat
{
    const typename Encoding::Text text;
};

template <class Encoding>
struct KeptTypesetting
{
    const typename Encoding::Text text;
};

/// @tparam Kept  stores the text for the calling function
template <class Encoding, class Kept>
mathexpr_status answerWithText(mathexpr_expression& expression, std::wstring_view made,
                               typename Encoding::MadeText* given)
{
    std::shared_ptr<Kept> kept(new Kept{Encoding::encode(made)});
    typename Encoding::MadeText known{};
    known.text = kept->text.c_str();
    known.text_length = kept->text.size();
    return answerWith<Encoding>(expression, known, given, std::move(kept));
}

template <class Encoding>
mathexpr_status formatText(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                           typename Encoding::MadeText* formatted) noexcept
{
    return serve<Encoding>(handle, text, length, formatted,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               return answerWithText<Encoding, KeptFormat<Encoding>>(
                                   expression, mathexpr::formatText(expression.object(), typed.c_str()), formatted);
                           });
}

template <class Encoding>
mathexpr_status typesetText(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                            std::uint32_t notation, typename Encoding::MadeText* typeset) noexcept
{
    return serve<Encoding>(
        handle, text, length, typeset,
        [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
            if (notation > MATHEXPR_NOTATION_MATHML)
            {
                return MATHEXPR_BAD_OPTION;
            }
            return answerWithText<Encoding, KeptTypesetting<Encoding>>(
                expression,
                mathexpr::typesetText(expression.object(), typed.c_str(), static_cast<mathexpr::Notation>(notation)),
                typeset);
        });
}

template <class Encoding>
mathexpr_status findReferences(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                               const typename Encoding::Unit* name, std::size_t nameLength,
                               mathexpr_spans* spans) noexcept
{
    return serve<Encoding>(handle, text, length, spans,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               std::wstring wideName;
                               const mathexpr_status status = takeText<Encoding>(name, nameLength, wideName);
                               if (status != MATHEXPR_OK)
                               {
                                   return status;
                               }
                               auto kept = std::make_shared<KeptAnswer<Encoding, mathexpr_span>>();
                               UnitCounter<Encoding> units(typed);
                               for (const mathexpr::TextSpan& span :
                                    mathexpr::findReferences(expression.object(), typed.c_str(), wideName.c_str()))
                               {
                                   kept->elements.push_back(units.spanOf(span));
                               }
                               return answerWithList<Encoding>(expression, spans, std::move(kept));
                           });
}

template <class Encoding, class Kept>
typename Encoding::Edit describeEdit(const mathexpr::TextEdit& edit, UnitCounter<Encoding>& units, Kept& kept)
{
    const mathexpr_span span = units.spanOf(edit.span);
    const typename Encoding::Unit* const replacement = kept.keep(edit.replacement);
    return {span.start, span.length, replacement, kept.texts.back().size()};
}

template <class Encoding>
mathexpr_status renameInText(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                             const typename Encoding::Unit* name, std::size_t nameLength,
                             const typename Encoding::Unit* newName, std::size_t newNameLength,
                             typename Encoding::Renaming* renaming) noexcept
{
    return serve<Encoding>(
        handle, text, length, renaming,
        [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
            std::wstring wideName;
            std::wstring wideNewName;
            mathexpr_status status = takeText<Encoding>(name, nameLength, wideName);
            status = status != MATHEXPR_OK ? status : takeText<Encoding>(newName, newNameLength, wideNewName);
            if (status != MATHEXPR_OK)
            {
                return status;
            }
            const mathexpr::Renaming own =
                mathexpr::renameInText(expression.object(), typed.c_str(), wideName.c_str(), wideNewName.c_str());
            auto kept = std::make_shared<KeptAnswer<Encoding, typename Encoding::Edit>>();
            UnitCounter<Encoding> units(typed);
            typename Encoding::Renaming known{};
            known.refusal = static_cast<std::uint32_t>(own.refusal);
            known.refused_at = units.spanOf(own.refusedAt);
            for (const mathexpr::TextEdit& edit : own.edits)
            {
                kept->elements.push_back(describeEdit(edit, units, *kept));
            }
            known.edits = kept->data();
            known.edit_count = kept->elements.size();
            return answerWith<Encoding>(expression, known, renaming, std::move(kept));
        });
}

template <class Encoding>
mathexpr_status getLiterals(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                            mathexpr_literals* literals) noexcept
{
    return serve<Encoding>(handle, text, length, literals,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               auto kept = std::make_shared<KeptAnswer<Encoding, mathexpr_literal>>();
                               UnitCounter<Encoding> units(typed);
                               for (const mathexpr::TextLiteral& literal :
                                    mathexpr::getLiterals(expression.object(), typed.c_str()))
                               {
                                   const mathexpr_span span = units.spanOf(literal.span);
                                   kept->elements.push_back({span.start, span.length, toHost(literal.value)});
                               }
                               return answerWithList<Encoding>(expression, literals, std::move(kept));
                           });
}

template <class Encoding>
mathexpr_status diagnoseText(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                             std::uint32_t flags, std::uint32_t* state,
                             typename Encoding::Diagnostic* diagnostic) noexcept
{
    return serve<Encoding>(handle, text, length, diagnostic,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               if (state == nullptr)
                               {
                                   return MATHEXPR_NULL_ARGUMENT;
                               }
                               mathexpr::HostQuestions questions{};
                               if (!readQuestions(flags, questions))
                               {
                                   return MATHEXPR_BAD_OPTION;
                               }
                               const mathexpr::TypingDiagnostic own =
                                   mathexpr::diagnoseText(expression.object(), typed.c_str(), questions);
                               auto kept = std::make_shared<DiagnosticTexts<Encoding>>(own.failure);
                               *state = static_cast<std::uint32_t>(own.state);
                               const typename Encoding::Diagnostic known =
                                   describe<Encoding>(own.failure, *kept, typed);
                               return answerWith<Encoding>(expression, known, diagnostic, std::move(kept));
                           });
}

template <class Encoding>
mathexpr_status getSignature(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                             std::size_t cursor, typename Encoding::Signature* signature) noexcept
{
    return serve<Encoding>(handle, text, length, signature,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               const mathexpr::CallSignature own = mathexpr::getSignature(
                                   expression.object(), typed.c_str(), wideCursor<Encoding>(typed, cursor));
                               auto kept = std::make_shared<KeptAnswer<Encoding, typename Encoding::Overload>>();
                               for (const mathexpr::SignatureOverload& overload : own.overloads)
                               {
                                   const TextList<Encoding>& parameters = kept->lists.emplace_back(overload.parameters);
                                   kept->elements.push_back(
                                       {kept->keep(overload.help), kept->keep(overload.description), parameters.data(),
                                        parameters.size(), static_cast<std::uint32_t>(overload.parameterKind), 0});
                               }
                               typename Encoding::Signature known{};
                               known.argument = own.argument;
                               known.name = UnitCounter<Encoding>(typed).spanOf(own.name);
                               known.function = kept->keep(own.function);
                               known.unit = kept->keep(own.unit);
                               known.overloads = kept->data();
                               known.overload_count = kept->elements.size();
                               known.active_overload = own.activeOverload;
                               known.wanted = static_cast<std::uint32_t>(own.wanted);
                               return answerWith<Encoding>(expression, known, signature, std::move(kept));
                           });
}

template <class Encoding>
mathexpr_status getHover(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                         std::size_t cursor, std::uint32_t flags, typename Encoding::Hover* hover) noexcept
{
    return serve<Encoding>(handle, text, length, hover,
                           [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
                               mathexpr::HostQuestions questions{};
                               if (!readQuestions(flags, questions))
                               {
                                   return MATHEXPR_BAD_OPTION;
                               }
                               mathexpr::HoverInfo own = mathexpr::getHover(
                                   expression.object(), typed.c_str(), wideCursor<Encoding>(typed, cursor), questions);
                               auto kept = std::make_shared<KeptAnswer<Encoding>>();
                               UnitCounter<Encoding> units(typed);
                               typename Encoding::Hover known{};
                               known.kind = static_cast<std::uint32_t>(own.kind);
                               known.span = units.spanOf(own.span);
                               known.name = kept->keep(own.name);
                               known.help = kept->keep(own.help);
                               known.description = kept->keep(own.description);
                               known.domain = kept->keep(own.domain);
                               known.unit = kept->keep(own.unit);
                               known.example = kept->keep(own.example);
                               known.has_example_value = own.exampleValue ? 1 : 0;
                               known.has_value = own.value ? 1 : 0;
                               known.example_value = toHost(own.exampleValue.value_or(VALTYPE()));
                               known.value = toHost(own.value.value_or(VALTYPE()));
                               known.value_span = units.spanOf(own.valueSpan);
                               return answerWith<Encoding>(expression, known, hover, std::move(kept));
                           });
}

/// The options of a completion, in the library's structure.
template <class Encoding>
struct TakenOptions
{
    mathexpr::CompletionOptions own;
    std::optional<EncodedNameNotes<Encoding>> notes;  // referred to by own
};

template <class Encoding>
mathexpr_status takeOptions(const typename Encoding::CompletionOptions* given, TakenOptions<Encoding>& taken)
{
    typename Encoding::CompletionOptions options{};
    if (given != nullptr && !readStructure(given, options))
    {
        return MATHEXPR_BAD_SIZE;
    }
    if (options.recent == nullptr && options.recent_count != 0)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    mathexpr::CompletionOptions& own = taken.own;
    own.maxCount = options.max_count == 0 ? own.maxCount : options.max_count;
    if (options.get_notes != nullptr)
    {
        own.notes = &taken.notes.emplace(options.get_notes, options.context);
    }
    own.recent.resize(options.recent_count);
    mathexpr_status status = MATHEXPR_OK;
    for (std::size_t index = 0; index < options.recent_count && status == MATHEXPR_OK; ++index)
    {
        status = takeText<Encoding>(options.recent[index], MATHEXPR_ZERO_TERMINATED, own.recent[index]);
    }
    return status;
}

template <class Encoding>
mathexpr_status getCompletions(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                               std::size_t cursor, const typename Encoding::CompletionOptions* options,
                               typename Encoding::Completions* completions) noexcept
{
    return serve<Encoding>(
        handle, text, length, completions,
        [=](mathexpr_expression& expression, const std::wstring& typed) -> mathexpr_status {
            TakenOptions<Encoding> taken;
            const mathexpr_status status = takeOptions(options, taken);
            if (status != MATHEXPR_OK)
            {
                return status;
            }
            auto kept = std::make_shared<KeptAnswer<Encoding, typename Encoding::Completion>>();
            UnitCounter<Encoding> units(typed);
            const std::uint32_t at = wideCursor<Encoding>(typed, cursor);
            for (mathexpr::CompletionItem& item :
                 mathexpr::getCompletions(expression.object(), typed.c_str(), at, taken.own))
            {
                typename Encoding::Completion known{};
                known.kind = static_cast<std::uint32_t>(item.kind);
                known.value_kind = static_cast<std::uint32_t>(item.valueKind);
                known.edit = describeEdit(item.edit, units, *kept);
                UnitCounter<Encoding> inserted(item.edit.replacement);
                known.selection = inserted.spanOf({item.selection.start - item.edit.span.start, item.selection.length});
                known.selection.start += known.edit.start;
                known.name = kept->keep(item.name);
                known.description = kept->keep(item.description);
                known.has_value = item.value ? 1 : 0;
                known.value = toHost(item.value.value_or(VALTYPE()));
                known.unavailable = kept->keep(item.unavailable);
                kept->elements.push_back(known);
            }
            return answerWithList<Encoding>(expression, completions, std::move(kept));
        });
}

}

mathexpr_status mathexpr_get_tokens_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                         mathexpr_tokens* tokens) noexcept
{
    return getTokens<Utf8>(expression, text, length, tokens);
}

mathexpr_status mathexpr_get_tokens_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                          mathexpr_tokens* tokens) noexcept
{
    return getTokens<Utf16>(expression, text, length, tokens);
}

mathexpr_status mathexpr_format_text_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                          mathexpr_text_utf8* formatted) noexcept
{
    return formatText<Utf8>(expression, text, length, formatted);
}

mathexpr_status mathexpr_format_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                           mathexpr_text_utf16* formatted) noexcept
{
    return formatText<Utf16>(expression, text, length, formatted);
}

mathexpr_status mathexpr_find_references_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                              const char* name, size_t name_length, mathexpr_spans* spans) noexcept
{
    return findReferences<Utf8>(expression, text, length, name, name_length, spans);
}

mathexpr_status mathexpr_find_references_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                               size_t length, const mathexpr_char16* name, size_t name_length,
                                               mathexpr_spans* spans) noexcept
{
    return findReferences<Utf16>(expression, text, length, name, name_length, spans);
}

mathexpr_status mathexpr_rename_in_text_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                             const char* name, size_t name_length, const char* new_name,
                                             size_t new_name_length, mathexpr_renaming_utf8* renaming) noexcept
{
    return renameInText<Utf8>(expression, text, length, name, name_length, new_name, new_name_length, renaming);
}

mathexpr_status mathexpr_rename_in_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                              size_t length, const mathexpr_char16* name, size_t name_length,
                                              const mathexpr_char16* new_name, size_t new_name_length,
                                              mathexpr_renaming_utf16* renaming) noexcept
{
    return renameInText<Utf16>(expression, text, length, name, name_length, new_name, new_name_length, renaming);
}

mathexpr_status mathexpr_get_literals_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                           mathexpr_literals* literals) noexcept
{
    return getLiterals<Utf8>(expression, text, length, literals);
}

mathexpr_status mathexpr_get_literals_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                            mathexpr_literals* literals) noexcept
{
    return getLiterals<Utf16>(expression, text, length, literals);
}

mathexpr_status mathexpr_diagnose_text_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                            uint32_t flags, uint32_t* state,
                                            mathexpr_diagnostic_utf8* diagnostic) noexcept
{
    return diagnoseText<Utf8>(expression, text, length, flags, state, diagnostic);
}

mathexpr_status mathexpr_diagnose_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                             size_t length, uint32_t flags, uint32_t* state,
                                             mathexpr_diagnostic_utf16* diagnostic) noexcept
{
    return diagnoseText<Utf16>(expression, text, length, flags, state, diagnostic);
}

mathexpr_status mathexpr_get_signature_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                            size_t cursor, mathexpr_signature_utf8* signature) noexcept
{
    return getSignature<Utf8>(expression, text, length, cursor, signature);
}

mathexpr_status mathexpr_get_signature_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                             size_t length, size_t cursor, mathexpr_signature_utf16* signature) noexcept
{
    return getSignature<Utf16>(expression, text, length, cursor, signature);
}

mathexpr_status mathexpr_get_hover_utf8(mathexpr_expression* expression, const char* text, size_t length, size_t cursor,
                                        uint32_t flags, mathexpr_hover_utf8* hover) noexcept
{
    return getHover<Utf8>(expression, text, length, cursor, flags, hover);
}

mathexpr_status mathexpr_get_hover_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                         size_t cursor, uint32_t flags, mathexpr_hover_utf16* hover) noexcept
{
    return getHover<Utf16>(expression, text, length, cursor, flags, hover);
}

mathexpr_status mathexpr_get_completions_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                              size_t cursor, const mathexpr_completion_options_utf8* options,
                                              mathexpr_completions_utf8* completions) noexcept
{
    return getCompletions<Utf8>(expression, text, length, cursor, options, completions);
}

mathexpr_status mathexpr_get_completions_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                               size_t length, size_t cursor,
                                               const mathexpr_completion_options_utf16* options,
                                               mathexpr_completions_utf16* completions) noexcept
{
    return getCompletions<Utf16>(expression, text, length, cursor, options, completions);
}

mathexpr_status mathexpr_typeset_text_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                           uint32_t notation, mathexpr_text_utf8* typeset) noexcept
{
    return typesetText<Utf8>(expression, text, length, notation, typeset);
}

mathexpr_status mathexpr_typeset_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                            uint32_t notation, mathexpr_text_utf16* typeset) noexcept
{
    return typesetText<Utf16>(expression, text, length, notation, typeset);
}
