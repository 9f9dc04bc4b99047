// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr_editor.hpp - editor services for C++ hosts of any compiler: what an edit box needs while its user types.
//
//     mathexpr::Expression expression;
//     expression.variables().set("width", 2.5);
//     mathexpr::Editor editor(expression);
//     for (const mathexpr::Editor::Completion& item : editor.completions("2*wi", 4))
//         std::cout << item.name << '\n';  // width
//
// The header needs C++17 and mathexpr_editor.h, and calls only the C interface. Text, failures and results are as in
// mathexpr.hpp; results own their memory. Each throwing call has a twin with the prefix try, which returns a Result.
//
// Any text is accepted, also an incomplete or invalid one; a call fails only if a text is ill-formed UTF-8, a callable of the
// host throws or is running, or memory runs out. Positions and lengths count bytes. A cursor inside a character means the start
// of that character; a cursor beyond the end means the end. No call changes the expression or shows a message. The resolver is
// called only where an argument allows it.
#pragma once

#include <mathexpr.hpp>
#include <mathexpr_editor.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mathexpr {

/// The editor services of an expression, which must outlive this view.
class Editor
{
public:
    /// Whether the resolver may be called for names that are not known otherwise.
    enum class HostQuestions : std::uint32_t
    {
        Forbidden = 0,
        Allowed = MATHEXPR_MAY_ASK_HOST,
    };

    struct Span
    {
        std::size_t start = 0;
        std::size_t length = 0;
    };

    /// Replaces a span of the text.
    using Edit = Error::Fix;

    /// A token: a span of the text. Tokens cover the text without gaps.
    struct Token
    {
        std::uint32_t kind = MATHEXPR_TOKEN_OTHER;  ///< MATHEXPR_TOKEN_...
        std::size_t start = 0;
        std::size_t length = 0;
        std::uint32_t depth = 0;               ///< Number of brackets open around the token.
        std::optional<std::size_t> partner{};  ///< Of a bracket: the index of the matching one.
    };

    struct Renaming
    {
        std::uint32_t refusal = MATHEXPR_RENAME_DONE;  ///< MATHEXPR_RENAME_...
        Span refusedAt{};                              ///< The conflicting use, if there is one.
        std::vector<Edit> edits{};                     ///< In text order; none if the renaming is refused.
    };

    /// A literal number or point, which a slider or a dragged handle can replace.
    struct Literal
    {
        std::size_t start = 0;  ///< Includes the sign of a number.
        std::size_t length = 0;
        Value value{};
    };

    struct Diagnosis
    {
        std::uint32_t state = MATHEXPR_TYPING_COMPLETE;  ///< MATHEXPR_TYPING_...
        std::optional<Error> failure{};                  ///< The failure that compiling the text would give.
    };

    struct Overload
    {
        std::string help{};                     ///< The usage, such as "min(x,y)".
        std::string description{};              ///< One line.
        std::vector<std::string> parameters{};  ///< Names of the parameters; a final "..." means that more may follow.
        std::uint32_t parameterKind = MATHEXPR_VALUE_UNKNOWN;
    };

    /// The function call that contains a cursor. Outside calls, function and overloads are empty.
    struct Signature
    {
        std::string function{};      ///< "point" for a square bracket.
        Span name{};                 ///< Span of the function's name, or of the square bracket.
        std::uint32_t argument = 0;  ///< Index of the argument at the cursor, from 0.
        std::vector<Overload> overloads{};
        std::uint32_t activeOverload = 0;               ///< The first overload that has this argument; the last if none
                                                        ///< has.
        std::uint32_t wanted = MATHEXPR_VALUE_UNKNOWN;  ///< MATHEXPR_VALUE_...: the required kind of the argument.
        std::string unit{};                             ///< Unit of the argument, such as "degree".
    };

    /// The token under a cursor. The span is empty if there is no token, or only a blank. A text that does not apply is empty.
    struct Hover
    {
        std::uint32_t kind = MATHEXPR_TOKEN_BLANK;  ///< MATHEXPR_TOKEN_...
        Span span{};
        std::string name{};
        std::string help{};                   ///< The usage of an operator or function.
        std::string description{};            ///< One line.
        std::string domain{};                 ///< The function's message for an argument outside its domain.
        std::string unit{};                   ///< Unit of a function's argument.
        std::string example{};                ///< A valid call of the function.
        std::optional<Value> exampleValue{};  ///< Value of the example.
        std::optional<Value> value{};         ///< Of a number, a constant, a name, a call or a bracketed part.
        Span valueSpan{};                     ///< The part of the text that has this value.
    };

    /// The host's notes on one of its names.
    struct NameNotes
    {
        std::uint32_t valueKind = MATHEXPR_VALUE_UNKNOWN;  ///< MATHEXPR_VALUE_...
        std::string description{};                         ///< One line.
        std::string unavailable{};  ///< Why the name must not be used here; empty if it may be used.
    };

    struct CompletionOptions
    {
        std::uint32_t maxCount = 0;                               ///< Upper bound on the number of items; 0 means 200.
        std::vector<std::string> recent{};                        ///< Recently chosen names, the newest first.
        std::function<NameNotes(std::string_view name)> notes{};  ///< Called for names of Options::names, and for
                                                                  ///< matching names of an index.
    };

    /// One proposal.
    struct Completion
    {
        std::uint32_t kind = MATHEXPR_TOKEN_VARIABLE;  ///< MATHEXPR_TOKEN_CONSTANT, _FUNCTION, _VARIABLE or _HOST_NAME.
        std::uint32_t valueKind = MATHEXPR_VALUE_UNKNOWN;  ///< MATHEXPR_VALUE_...
        std::string name{};
        Edit edit{};                   ///< Inserts the name; a function is inserted as a valid call.
        Span selection{};              ///< What to select after the edit: a call's arguments, otherwise an empty span.
        std::string description{};     ///< One line.
        std::optional<Value> value{};  ///< Of a constant or variable.
        std::string unavailable{};     ///< As in NameNotes.
    };

    /// A sorted index of names, for models too large to enumerate at every keystroke; see mathexpr_name_index.
    class NameIndex
    {
    public:
        static Result<NameIndex> tryCreate()
        {
            mathexpr_name_index* made = nullptr;
            const mathexpr_status status = mathexpr_create_name_index(&made);
            return status == MATHEXPR_OK ? Result<NameIndex>(NameIndex(made))
                                         : Result<NameIndex>(detail::errorOfStatus(status));
        }
#if MATHEXPR_HAS_EXCEPTIONS
        NameIndex() : NameIndex(tryCreate().value()) {}
#endif

        /// Adds a name, or replaces its notes.
        Result<void> tryAdd(std::string_view name, const NameNotes& notes)
        {
            mathexpr_name_notes_utf8 given = sized<mathexpr_name_notes_utf8>();
            given.value_kind = notes.valueKind;
            given.description = notes.description.c_str();
            given.unavailable = notes.unavailable.c_str();
            const auto status = mathexpr_add_indexed_name_utf8(handle_.get(), name.data(), name.size(), &given);
            return status == MATHEXPR_OK ? Result<void>() : Result<void>(detail::errorOfText(status, name));
        }
#if MATHEXPR_HAS_EXCEPTIONS
        void add(std::string_view name, const NameNotes& notes)
        {
            tryAdd(name, notes).value();
        }
#endif

        /// @return whether the index held the name
        bool remove(std::string_view name)
        {
            return mathexpr_remove_indexed_name_utf8(handle_.get(), name.data(), name.size()) == MATHEXPR_OK;
        }

    private:
        friend class Editor;

        struct Destroy
        {
            void operator()(mathexpr_name_index* index) const noexcept { mathexpr_destroy_name_index(index); }
        };

        explicit NameIndex(mathexpr_name_index* handle) noexcept : handle_(handle) {}

        std::unique_ptr<mathexpr_name_index, Destroy> handle_;
    };

    explicit Editor(Expression& expression) noexcept : session_(expression.session_.get()) {}

    /// Attaches an index, in addition to Options::names. The expression keeps access to its names.
    Result<void> tryUseNames(const NameIndex& index)
    {
        return detail::resultOf(mathexpr_set_name_index(handle(), index.handle_.get()));
    }

    /// Splits a text into tokens, for syntax colours and bracket matching.
    Result<std::vector<Token>> tryTokens(std::string_view text)
    {
        mathexpr_tokens found = sized<mathexpr_tokens>();
        const auto status = mathexpr_get_tokens_utf8(handle(), text.data(), text.size(), &found);
        return answer<std::vector<Token>>(status, {text}, [&] {
            std::vector<Token> tokens;
            for (const mathexpr_token& token : Range<mathexpr_token>{found.tokens, found.token_count})
            {
                tokens.push_back({token.kind, token.start, token.length, token.depth,
                                  token.partner == MATHEXPR_NO_PARTNER ? std::nullopt : std::optional(token.partner)});
            }
            return tokens;
        });
    }

    /// Rewrites a text with uniform spacing; it compiles to the same program. See mathexpr_format_text_utf8.
    Result<std::string> tryFormat(std::string_view text)
    {
        mathexpr_text_utf8 made = sized<mathexpr_text_utf8>();
        const auto status = mathexpr_format_text_utf8(handle(), text.data(), text.size(), &made);
        return answer<std::string>(status, {text}, [&] { return std::string(made.text, made.text_length); });
    }

    /// Typesets a text as LaTeX or MathML; see mathexpr_typeset_text_utf8.
    /// @param notation  MATHEXPR_NOTATION_...
    Result<std::string> tryTypeset(std::string_view text, std::uint32_t notation)
    {
        mathexpr_text_utf8 made = sized<mathexpr_text_utf8>();
        const auto status = mathexpr_typeset_text_utf8(handle(), text.data(), text.size(), notation, &made);
        return answer<std::string>(status, {text}, [&] { return std::string(made.text, made.text_length); });
    }

    /// Finds all uses of a name; see mathexpr_find_references_utf8.
    Result<std::vector<Span>> tryReferences(std::string_view text, std::string_view name)
    {
        mathexpr_spans found = sized<mathexpr_spans>();
        const auto status =
            mathexpr_find_references_utf8(handle(), text.data(), text.size(), name.data(), name.size(), &found);
        return answer<std::vector<Span>>(status, {text, name}, [&] {
            std::vector<Span> spans;
            for (const mathexpr_span& span : Range<mathexpr_span>{found.spans, found.span_count})
            {
                spans.push_back(spanOf(span));
            }
            return spans;
        });
    }

    /// Computes the edits that rename a variable or a name of the host at all its uses.
    Result<Renaming> tryRename(std::string_view text, std::string_view name, std::string_view newName)
    {
        mathexpr_renaming_utf8 found = sized<mathexpr_renaming_utf8>();
        const auto status = mathexpr_rename_in_text_utf8(handle(), text.data(), text.size(), name.data(), name.size(),
                                                         newName.data(), newName.size(), &found);
        return answer<Renaming>(status, {text, name, newName}, [&] {
            Renaming renaming{found.refusal, spanOf(found.refused_at), {}};
            for (const mathexpr_edit_utf8& edit : Range<mathexpr_edit_utf8>{found.edits, found.edit_count})
            {
                renaming.edits.push_back(editOf(edit));
            }
            return renaming;
        });
    }

    /// Lists the literals of a text in order. A point is listed before its coordinates.
    Result<std::vector<Literal>> tryLiterals(std::string_view text)
    {
        mathexpr_literals found = sized<mathexpr_literals>();
        const auto status = mathexpr_get_literals_utf8(handle(), text.data(), text.size(), &found);
        return answer<std::vector<Literal>>(status, {text}, [&] {
            std::vector<Literal> literals;
            for (const mathexpr_literal& literal : Range<mathexpr_literal>{found.literals, found.literal_count})
            {
                literals.push_back({literal.start, literal.length, Value(literal.value)});
            }
            return literals;
        });
    }

    /// Checks whether a text would compile, is incomplete, or is wrong. A name of Options::names counts as known.
    Result<Diagnosis> tryDiagnose(std::string_view text, HostQuestions questions = HostQuestions::Forbidden)
    {
        Diagnosis diagnosis;
        mathexpr_diagnostic_utf8 found = sized<mathexpr_diagnostic_utf8>();
        const auto status = mathexpr_diagnose_text_utf8(handle(), text.data(), text.size(), flagsOf(questions),
                                                        &diagnosis.state, &found);
        return answer<Diagnosis>(status, {text}, [&] {
            if (diagnosis.state != MATHEXPR_TYPING_COMPLETE)
            {
                diagnosis.failure = detail::errorOfDiagnostic(found);
            }
            return diagnosis;
        });
    }

    /// Finds the innermost function call that is open at a cursor.
    Result<Signature> trySignature(std::string_view text, std::size_t cursor)
    {
        mathexpr_signature_utf8 found = sized<mathexpr_signature_utf8>();
        const auto status = mathexpr_get_signature_utf8(handle(), text.data(), text.size(), cursor, &found);
        return answer<Signature>(status, {text}, [&] {
            Signature signature{found.function,        spanOf(found.name), found.argument, {},
                                found.active_overload, found.wanted,       found.unit};
            for (const mathexpr_overload_utf8& overload :
                 Range<mathexpr_overload_utf8>{found.overloads, found.overload_count})
            {
                signature.overloads.push_back({overload.help,
                                               overload.description,
                                               {overload.parameters, overload.parameters + overload.parameter_count},
                                               overload.parameter_kind});
            }
            return signature;
        });
    }

    /// Describes the token at a cursor.
    Result<Hover> tryHover(std::string_view text, std::size_t cursor,
                           HostQuestions questions = HostQuestions::Forbidden)
    {
        mathexpr_hover_utf8 found = sized<mathexpr_hover_utf8>();
        const auto status =
            mathexpr_get_hover_utf8(handle(), text.data(), text.size(), cursor, flagsOf(questions), &found);
        return answer<Hover>(status, {text}, [&] {
            return Hover{found.kind,
                         spanOf(found.span),
                         found.name,
                         found.help,
                         found.description,
                         found.domain,
                         found.unit,
                         found.example,
                         valueOf(found.has_example_value, found.example_value),
                         valueOf(found.has_value, found.value),
                         spanOf(found.value_span)};
        });
    }

    /// Proposes items for the cursor; see mathexpr_get_completions_utf8.
    Result<std::vector<Completion>> tryCompletions(std::string_view text, std::size_t cursor,
                                                   const CompletionOptions& options)
    {
        std::vector<const char*> recent;
        for (const std::string& name : options.recent)
        {
            recent.push_back(name.c_str());
        }
        Notes notes{session_, &options, {}};
        mathexpr_completion_options_utf8 given = sized<mathexpr_completion_options_utf8>();
        given.max_count = options.maxCount;
        given.recent = recent.data();
        given.recent_count = recent.size();
        given.context = &notes;
        given.get_notes = options.notes ? getNotes : nullptr;
        mathexpr_completions_utf8 found = sized<mathexpr_completions_utf8>();
        const auto status = mathexpr_get_completions_utf8(handle(), text.data(), text.size(), cursor, &given, &found);
        return answer<std::vector<Completion>>(status, {text}, [&] {
            std::vector<Completion> items;
            for (const mathexpr_completion_utf8& item : Range<mathexpr_completion_utf8>{found.items, found.item_count})
            {
                items.push_back({item.kind, item.value_kind, item.name, editOf(item.edit), spanOf(item.selection),
                                 item.description, valueOf(item.has_value, item.value), item.unavailable});
            }
            return items;
        });
    }
    Result<std::vector<Completion>> tryCompletions(std::string_view text, std::size_t cursor)
    {
        return tryCompletions(text, cursor, CompletionOptions());
    }

#if MATHEXPR_HAS_EXCEPTIONS
    void useNames(const NameIndex& index)
    {
        tryUseNames(index).value();
    }
    std::vector<Token> tokens(std::string_view text)
    {
        return tryTokens(text).value();
    }
    std::string format(std::string_view text)
    {
        return tryFormat(text).value();
    }
    std::string typeset(std::string_view text, std::uint32_t notation)
    {
        return tryTypeset(text, notation).value();
    }
    std::vector<Span> references(std::string_view text, std::string_view name)
    {
        return tryReferences(text, name).value();
    }
    Renaming rename(std::string_view text, std::string_view name, std::string_view newName)
    {
        return tryRename(text, name, newName).value();
    }
    std::vector<Literal> literals(std::string_view text)
    {
        return tryLiterals(text).value();
    }
    Diagnosis diagnose(std::string_view text, HostQuestions questions = HostQuestions::Forbidden)
    {
        return tryDiagnose(text, questions).value();
    }
    Signature signature(std::string_view text, std::size_t cursor)
    {
        return trySignature(text, cursor).value();
    }
    Hover hover(std::string_view text, std::size_t cursor, HostQuestions questions = HostQuestions::Forbidden)
    {
        return tryHover(text, cursor, questions).value();
    }
    std::vector<Completion> completions(std::string_view text, std::size_t cursor, const CompletionOptions& options)
    {
        return tryCompletions(text, cursor, options).value();
    }
    std::vector<Completion> completions(std::string_view text, std::size_t cursor)
    {
        return tryCompletions(text, cursor).value();
    }
#endif

private:
    /// The elements of an array in a result.
    template <class Element>
    struct Range
    {
        const Element* first;
        std::size_t count;

        const Element* begin() const noexcept { return first; }
        const Element* end() const noexcept { return first + count; }
    };

    /// Context of the callback. It owns the notes returned last, which the library reads after the callback returns.
    struct Notes
    {
        detail::Session* session;
        const CompletionOptions* options;
        NameNotes last;
    };

    template <class Record>
    static Record sized() noexcept
    {
        Record record{};
        record.size = sizeof(record);
        return record;
    }

    static Span spanOf(const mathexpr_span& span) noexcept
    {
        return {span.start, span.length};
    }

    static Edit editOf(const mathexpr_edit_utf8& edit)
    {
        return {edit.start, edit.length, {edit.replacement, edit.replacement_length}};
    }

    static std::optional<Value> valueOf(std::uint32_t hasValue, const mathexpr_value& value) noexcept
    {
        return hasValue != 0 ? std::optional<Value>(Value(value)) : std::nullopt;
    }

    static std::uint32_t flagsOf(HostQuestions questions) noexcept
    {
        return static_cast<std::uint32_t>(questions);
    }

    static std::int32_t getNotes(void* context, const char* name, std::size_t length, mathexpr_name_notes_utf8* notes)
    {
        Notes& asked = *static_cast<Notes*>(context);
        std::int32_t known = MATHEXPR_LOOKUP_REFUSED;
        detail::Session::guarded(*asked.session, [&] {
            asked.last = asked.options->notes(std::string_view(name, length));
            notes->value_kind = asked.last.valueKind;
            notes->description = asked.last.description.c_str();
            notes->unavailable = asked.last.unavailable.c_str();
            known = MATHEXPR_LOOKUP_FOUND;
        });
        return known;
    }

    mathexpr_expression* handle() const noexcept
    {
        return session_->handle();
    }

    /// Converts the outcome of a call. An error about ill-formed text refers to the first ill-formed one of texts.
    template <class Answer, class Take>
    Result<Answer> answer(mathexpr_status status, std::initializer_list<std::string_view> texts, Take take)
    {
        session_->rethrow();
        if (status == MATHEXPR_OK)
        {
            return take();
        }
        std::string_view wrong;
        for (const std::string_view text : texts)
        {
            const bool isSound = mathexpr_check_utf8(text.data(), text.size(), nullptr) == MATHEXPR_OK;
            wrong = wrong.empty() && !isSound ? text : wrong;
        }
        return detail::errorOfText(status, wrong);
    }

    detail::Session* session_;
};

}
