// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Completion.cpp - what matches is collected, what the object would refuse is left out, the rest is put in order.
//
// Not every name is tried: the object's answer depends on whether a value is a number or a point, and of a call on how
// many records and brackets it has. So one of each class is tried, in the text up to the cursor with all that is open
// closed, and each constant by itself.
#include "mathexpr/Completion.h"

#include "MTParserLib/names/MTNameIndex.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/editor/FunctionFacts.h"
#include "mathexpr/editor/OpenBrackets.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/Trial.h"
#include "mathexpr/editor/UnitNames.h"
#include "mathexpr/hints/NameWords.h"
#include "platform/FloatingPointGuard.h"

#include <algorithm>
#include <limits>
#include <map>
#include <tuple>
#include <unordered_set>

namespace mathexpr {
namespace editor {
namespace {

bool beginsWith(std::wstring_view text, std::wstring_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

bool beginsAlike(std::wstring_view text, std::wstring_view beginning)
{
    return sameIgnoringCase(text.substr(0, beginning.size()), beginning);
}

/// Whether a word of the text, after its first, begins so.
bool hasWord(std::wstring_view text, std::wstring_view beginning)
{
    for (std::size_t at = 1; at < text.size(); ++at)
    {
        if (beginsWord(text, at) && beginsAlike(text.substr(at), beginning))
        {
            return true;
        }
    }
    return false;
}

/// How well an item matches, the best first.
enum class Match : std::uint8_t
{
    Beginning,
    BeginningInOtherCase,
    Word,
    Unit,
    None,
};

Match matchOf(std::wstring_view name, std::wstring_view description, std::wstring_view typed)
{
    if (beginsWith(name, typed))
    {
        return Match::Beginning;
    }
    if (beginsAlike(name, typed))
    {
        return Match::BeginningInOtherCase;
    }
    if (hasWord(name, typed))
    {
        return Match::Word;
    }
    const auto isMeant = [typed](std::wstring_view text) { return beginsAlike(text, typed) || hasWord(text, typed); };
    const bool isConversion = isMeant(unitOfArgument(name)) || isMeant(unitOfResult(name));
    return isConversion || isMeant(description) ? Match::Unit : Match::None;
}

/// The place in the text that is completed.
struct CompletedPlace
{
    std::wstring before;
    TextSpan replaced;
    std::wstring typed;  // before the cursor, of what is replaced
    wchar_t following;   // the next character behind it that is no blank; 0 at the end
    bool assigns;        // whether it is assigned to
    // Whether a name or number stands before or behind it, across blanks: what is inserted would become a part of it.
    bool followsWord;
    bool precedesWord;
    std::wstring closing;  // of what is open before it
    ValueKind wanted;
};

bool isWord(const TextToken& token)
{
    return token.kind == TokenKind::Number || token.kind == TokenKind::Constant || token.kind == TokenKind::Function ||
           isRenamable(token);
}

CompletedPlace placeAt(const MathExpression& expression, const TextReading& reading, std::uint32_t cursor)
{
    const std::wstring_view text = reading.typed();
    const auto at = std::min(cursor, static_cast<std::uint32_t>(text.size()));
    CompletedPlace place{{}, {at, 0}, {}, L'\0', false, false, false, {}, ValueKind::Unknown};
    const auto word = std::find_if(reading.tokens().begin(), reading.tokens().end(), [at](const TextToken& token) {
        return isWord(token) && token.start <= at && at <= endOf(token);
    });
    if (word != reading.tokens().end())
    {
        place.replaced = spanOf(*word);
        place.assigns = word->kind == TokenKind::AssignedName;
    }
    place.before = text.substr(0, place.replaced.start);
    TextToken typed;
    typed.start = place.replaced.start;
    typed.length = at - place.replaced.start;
    place.typed = reading.textOf(typed);
    const std::size_t next = text.find_first_not_of(L' ', std::size_t{place.replaced.start} + place.replaced.length);
    place.following = next == std::wstring_view::npos ? L'\0' : text[next];
    for (const TextToken& token : reading.tokens())
    {
        if (token.kind != TokenKind::Blank && token.start < place.replaced.start)
        {
            place.followsWord = isWord(token);
        }
        place.precedesWord = place.precedesWord || (token.start == next && isWord(token));
    }

    const TextReading readingBefore(expression, place.before);
    const std::vector<OpenBracket> open = openBracketsAt(readingBefore, place.replaced.start);
    place.closing = closingOf(open);
    if (!open.empty())
    {
        const std::vector<const FunctionFacts*> overloads = overloadsOf(open.back().function);
        place.wanted = overloads.empty() ? ValueKind::Unknown
                                         : overloads[overloadWith(overloads, open.back().argument)]->parameterKind;
    }
    return place;
}

/// Names of an index that are considered, even where fewer are offered: the best of them are.
constexpr std::size_t leastConsidered = 256;

class Completer
{
public:
    Completer(const MathExpression& givenExpression, const TextReading& given, std::uint32_t cursor,
              const CompletionOptions& givenOptions)
        : expression(givenExpression), reading(given), options(givenOptions),
          place(placeAt(givenExpression, given, cursor)), trial(givenExpression, given.names(), false)
    {}

    std::vector<CompletionItem> complete()
    {
        if (place.followsWord)
        {
            return {};
        }
        const bool callsOnly = place.following == L'(' || place.following == L'[' || place.precedesWord;
        if (!callsOnly)
        {
            addVariables();
            addConstants();
            addHostNames();
        }
        if (!place.assigns)
        {
            addFunctions();
        }
        std::stable_sort(ranked.begin(), ranked.end(),
                         [](const Ranked& left, const Ranked& right) { return left.rank < right.rank; });
        std::vector<CompletionItem> items;
        for (std::size_t index = 0; index < std::min<std::size_t>(ranked.size(), options.maxCount); ++index)
        {
            items.push_back(std::move(ranked[index].item));
        }
        return items;
    }

private:
    // Of unknown kind, match, not of the wanted kind, place among the recent, length.
    using Rank = std::tuple<bool, Match, bool, std::size_t, std::size_t>;

    struct Ranked
    {
        Rank rank;
        CompletionItem item;
    };

    /// Whether the text up to the cursor takes something there.
    bool isTaken(const std::wstring& inserted)
    {
        return trial.judge(place.before + inserted + place.closing) != Trial::Verdict::Refused;
    }

    bool takesKind(ValueKind kind)
    {
        std::optional<bool>& taken = kind == ValueKind::Point ? takesPoint : takesNumber;
        if (!taken)
        {
            taken = isTaken(kind == ValueKind::Point ? Trial::anyPoint : Trial::anyNumber);
        }
        return *taken;
    }

    bool takesEither() { return takesKind(ValueKind::Number) || takesKind(ValueKind::Point); }

    bool takesCall(const FunctionFacts& facts)
    {
        const auto signature = std::make_tuple(facts.arguments.size(), facts.parameterKind, facts.resultKind);
        const auto known = takesCalls.find(signature);
        if (known != takesCalls.end())
        {
            return known->second;
        }
        const bool isAccepted = isTaken(facts.call());
        takesCalls.emplace(signature, isAccepted);
        return isAccepted;
    }

    /// Whether a name there would be read as a name: an "e" before "+" is not, and no limit is broken.
    bool isReadAsName(std::wstring_view name) const
    {
        return (place.following != L'+' || name.back() != L'e') && keepsLimit(name.size());
    }

    bool keepsLimit(std::size_t insertedLength) const
    {
        return !isTooLong(expression, reading.typed().size() - place.replaced.length + insertedLength);
    }

    void addVariables()
    {
        const MTParserRegistrar& registrar = reading.names().registrar();
        for (std::size_t index = 0; index < registrar.getNbVariables(); ++index)
        {
            const MTVariableDefinition& variable = registrar.getVariableDefinition(index);
            CompletionItem item;
            item.kind = variable.answeredByHost ? TokenKind::HostName : TokenKind::Variable;
            item.value = *variable.item->getValuePtr();
            item.valueKind = item.value->type == 1 ? ValueKind::Point : ValueKind::Number;
            addName(std::move(item), variable.name);
        }
    }

    void addConstants()
    {
        const MTParserRegistrar& registrar = reading.names().registrar();
        for (std::size_t index = 0; index < registrar.getNbConstants() && !place.assigns; ++index)
        {
            CompletionItem item;
            item.kind = TokenKind::Constant;
            item.value = registrar.getConstantValue(index);
            item.valueKind = ValueKind::Number;
            addName(std::move(item), registrar.getConstantName(index));
        }
    }

    void addHostNames()
    {
        const std::size_t considered = std::max<std::size_t>(options.maxCount, leastConsidered);
        const std::vector<std::wstring> indexed = reading.names().indexedMatching(place.typed, considered);
        std::unordered_set<std::wstring_view> seen;
        const auto addOnce = [&](const std::wstring& name, const NameNotes* known) {
            if (isHostsAlone(name) && seen.insert(name).second)
            {
                addHostName(name, known);
            }
        };
        for (const std::wstring& name : reading.names().hostNames())
        {
            addOnce(name, nullptr);
        }
        for (const std::wstring& name : options.recent)
        {
            const NameNotes* const known = reading.names().findIndexed(name);
            if (known != nullptr)
            {
                addOnce(name, known);
            }
        }
        for (const std::wstring& name : indexed)
        {
            addOnce(name, reading.names().findIndexed(name));
        }
    }

    /// Whether a name means what the host says, and not something of the language or a variable.
    bool isHostsAlone(const std::wstring& name) const
    {
        const MTParserRegistrar& registrar = reading.names().registrar();
        const bool isOwn = registrar.findVariableDefinition(name) != nullptr ||
                           registrar.findConstant(name) != MTParserRegistrar::notFound;
        return !isOwn && !name.empty() && canBeWritten(name);
    }

    /// @param known  notes of an index; null for a name that is in none
    void addHostName(const std::wstring& name, const NameNotes* known)
    {
        CompletionItem item;
        item.kind = TokenKind::HostName;
        if (options.notes != nullptr)
        {
            addNotes(item, getNotes(name));
        }
        else if (known != nullptr)
        {
            addNotes(item, *known);
        }
        addName(std::move(item), name);
    }

    static void addNotes(CompletionItem& item, NameNotes notes)
    {
        item.valueKind = notes.kind;
        item.description = std::move(notes.description);
        item.unavailable = std::move(notes.unavailable);
    }

    NameNotes getNotes(const std::wstring& name) const
    {
        const platform::HostFloatingPoint hostsWords;
        return options.notes->getNotes(name.c_str());
    }

    /// Whether an expression can read a name of the host's and define it.
    bool canBeWritten(const std::wstring& name) const
    {
        const MTParserRegistrar& registrar = reading.names().registrar();
        const auto isPlain = [&](wchar_t character) {
            return registrar.getPlainCharacters().contains(character) &&
                   std::wstring_view(L" .[]").find(character) == std::wstring_view::npos;
        };
        return !registrar.isNumber(name) && std::all_of(name.begin(), name.end(), isPlain);
    }

    void addName(CompletionItem item, const std::wstring& name)
    {
        const Match match = matchOf(name, item.description, place.typed);
        if (match == Match::None || !isReadAsName(name))
        {
            return;
        }
        const bool isAssignable = place.assigns;
        const bool isAccepted = isAssignable                       ? true
                                : item.kind == TokenKind::Constant ? isTaken(name)
                                : item.valueKind == ValueKind::Unknown || item.valueKind == ValueKind::Either
                                    ? takesEither()
                                    : takesKind(item.valueKind);
        if (isAccepted)
        {
            item.name = name;
            item.edit = {place.replaced, name};
            item.selection = {static_cast<std::uint32_t>(place.replaced.start + name.size()), 0};
            add(std::move(item), match);
        }
    }

    void addFunctions()
    {
        std::unordered_set<std::wstring_view> seen;
        for (const FunctionFacts& facts : allFunctions())
        {
            const Match match = matchOf(facts.symbol, facts.description, place.typed);
            if (match == Match::None || seen.count(facts.symbol) != 0 || !takesCall(facts))
            {
                continue;
            }
            seen.insert(facts.symbol);
            const std::wstring arguments = facts.argumentList();
            const std::wstring inserted = place.following == L'('                         ? facts.symbol
                                          : place.following == L'[' || place.precedesWord ? facts.symbol + L'('
                                                                                          : facts.call();
            if (!keepsLimit(inserted.size()))
            {
                continue;
            }
            const bool isCall = inserted.size() > facts.symbol.size() + 1;
            CompletionItem item;
            item.kind = TokenKind::Function;
            item.name = facts.symbol;
            item.edit = {place.replaced, inserted};
            item.selection.start =
                static_cast<std::uint32_t>(place.replaced.start + (isCall ? facts.symbol.size() + 1 : inserted.size()));
            item.selection.length = isCall ? static_cast<std::uint32_t>(arguments.size()) : 0;
            item.description = facts.description;
            item.valueKind = facts.resultKind;
            add(std::move(item), match);
        }
    }

    void add(CompletionItem item, Match match)
    {
        const bool isUnknown = item.valueKind == ValueKind::Unknown || !item.unavailable.empty();
        const bool isOther =
            (place.wanted == ValueKind::Number || place.wanted == ValueKind::Point) && item.valueKind != place.wanted;
        const auto recent = std::find(options.recent.begin(), options.recent.end(), item.name);
        const Rank rank{isUnknown, match, isOther, static_cast<std::size_t>(recent - options.recent.begin()),
                        item.name.size()};
        ranked.push_back({rank, std::move(item)});
    }

    const MathExpression& expression;
    const TextReading& reading;
    const CompletionOptions& options;
    const CompletedPlace place;
    Trial trial;
    std::optional<bool> takesNumber;
    std::optional<bool> takesPoint;
    std::map<std::tuple<std::size_t, ValueKind, ValueKind>, bool> takesCalls;  // by signature
    std::vector<Ranked> ranked;
};

}
}

std::vector<CompletionItem> getCompletions(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor,
                                           const CompletionOptions& options)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        if (editor::isTooLong(expression, reading.typed().size()))
        {
            return std::vector<CompletionItem>();
        }
        return editor::Completer(expression, reading, cursor, options).complete();
    });
}

}
