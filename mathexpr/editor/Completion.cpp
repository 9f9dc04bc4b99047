// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Completion.cpp - collects matching candidates, drops those that the object would refuse, and builds items from the
// best.
//
// Not every name is tried. Whether the object accepts a value depends only on the kind of the value; for a call, also
// on the number of records and brackets. So one representative of each class is tried, in the text up to the cursor
// with all open brackets closed. Constants are tried individually. A candidate owns no text, since most candidates are
// dropped.
#include "mathexpr/Completion.h"

#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/editor/CompletedPlace.h"
#include "mathexpr/editor/FunctionFacts.h"
#include "mathexpr/editor/NameMatch.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/Trial.h"
#include "mathexpr/editor/UnitNames.h"
#include "platform/FloatingPointGuard.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <tuple>
#include <unordered_set>

namespace mathexpr {
namespace editor {
namespace {

/// Minimum number of index names to consider, so that the best ones are found even if only a few are requested.
constexpr std::size_t leastConsidered = 256;

/// Unknown kind, match, not of the required kind, position in recent, length, position among the candidates.
using Rank = std::tuple<bool, Match, bool, std::size_t, std::size_t, std::size_t>;

/// A candidate. It points to data of the object, the vocabulary, the host's names and their notes.
struct Candidate
{
    TokenKind kind;
    std::wstring_view name;
    ValueKind valueKind;
    const VALTYPE* value = nullptr;           // of a constant or variable
    const FunctionFacts* function = nullptr;  // of a function
    const NameNotes* notes = nullptr;         // of a name of the host's
    Rank rank;
};

struct HostName
{
    std::wstring_view name;
    const NameNotes* notes;  // null if there are none
};

class Completer
{
public:
    Completer(const MathExpression& givenExpression, const TextReading& given, std::uint32_t cursor,
              const CompletionOptions& givenOptions)
        : expression(givenExpression), reading(given), names(given.names()), options(givenOptions),
          place(completedPlaceAt(given, cursor)), trial(givenExpression, given.names(), false)
    {
        for (const VocabularyUnit& unit : vocabularyUnits)
        {
            if (isMeant(unit, place.typed))
            {
                meantUnits.push_back(&unit);
            }
        }
    }

    std::vector<CompletionItem> complete()
    {
        if (place.followsWord)
        {
            return {};
        }
        tellKinds();
        const bool callsOnly = place.following == L'(' || place.following == L'[' || place.precedesWord;
        if (!callsOnly)
        {
            listHostNames();  // first, since the host may change the object in its callback
            addVariables();
            addConstants();
            addHostNames();
        }
        if (!place.assigns)
        {
            addFunctions();
        }
        const auto end = candidates.begin() +
                         static_cast<std::ptrdiff_t>(std::min<std::size_t>(candidates.size(), options.maxCount));
        std::partial_sort(candidates.begin(), end, candidates.end(),
                          [](const Candidate& left, const Candidate& right) { return left.rank < right.rank; });
        std::vector<CompletionItem> items;
        std::transform(candidates.begin(), end, std::back_inserter(items),
                       [this](const Candidate& candidate) { return itemOf(candidate); });
        return items;
    }

private:
    /// Whether the text up to the cursor is accepted with this insertion.
    bool isTaken(std::wstring_view inserted)
    {
        return trial.judge((place.before + std::wstring(inserted)) + place.closing) != Trial::Verdict::Refused;
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
        const bool isAccepted = isTaken(facts.call);
        takesCalls.emplace(signature, isAccepted);
        return isAccepted;
    }

    /// Whether the inserted name would be read as a name, unlike an "e" before "+", and would not exceed a limit.
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
        const MTParserRegistrar& registrar = names.registrar();
        for (std::size_t index = 0; index < registrar.getNbVariables(); ++index)
        {
            const MTVariableDefinition& variable = registrar.getVariableDefinition(index);
            Candidate candidate{};
            candidate.kind = variable.answeredByHost ? TokenKind::HostName : TokenKind::Variable;
            candidate.name = variable.name;
            candidate.value = variable.item->getValuePtr();
            candidate.valueKind = candidate.value->type == 1 ? ValueKind::Point : ValueKind::Number;
            addName(candidate);
        }
    }

    void addConstants()
    {
        const MTParserRegistrar& registrar = names.registrar();
        for (std::size_t index = 0; index < registrar.getNbConstants() && !place.assigns; ++index)
        {
            Candidate candidate{};
            candidate.kind = TokenKind::Constant;
            candidate.name = registrar.getConstantName(index);
            candidate.value = &registrar.getConstantValue(index);
            candidate.valueKind = ValueKind::Number;
            addName(candidate);
        }
    }

    /// Passes the kinds of host names before the cursor to the trial: they determine what is accepted at the cursor.
    void tellKinds()
    {
        for (const TextToken& token : reading.tokens())
        {
            if (options.notes != nullptr && token.kind == TokenKind::HostName && token.start < place.replaced.start)
            {
                const std::wstring name = reading.textOf(token);
                trial.setKind(name, askFor(name).kind);
            }
        }
    }

    NameNotes askFor(const std::wstring& name) const
    {
        const platform::HostFloatingPoint hostsWords;
        return options.notes->getNotes(name.c_str());
    }

    void listHostNames()
    {
        for (const std::wstring& name : names.hostNames())
        {
            listHostName(name, nullptr);
        }
        const std::size_t considered = std::max<std::size_t>(options.maxCount, leastConsidered);
        indexed = names.indexedMatching(place.typed, considered);
        std::unordered_set<std::wstring_view> seen;
        const auto listOnce = [&](const std::wstring& name) {
            const NameNotes* const known = names.findIndexed(name);
            if (known != nullptr && !names.isHostName(name) && seen.insert(name).second)
            {
                listHostName(name, known);
            }
        };
        std::for_each(options.recent.begin(), options.recent.end(), listOnce);
        std::for_each(indexed.begin(), indexed.end(), listOnce);
    }

    /// @param known  the index's notes on the name
    void listHostName(const std::wstring& name, const NameNotes* known)
    {
        if (!isHostsAlone(name))
        {
            return;
        }
        if (options.notes != nullptr)
        {
            known = &askedNotes.emplace_back(askFor(name));
        }
        hostNames.push_back({name, known});
    }

    /// Whether only the host knows the name: it is not a variable and not part of the language.
    bool isHostsAlone(const std::wstring& name) const
    {
        const MTParserRegistrar& registrar = names.registrar();
        const bool isOwn = registrar.findVariableDefinition(name) != nullptr ||
                           registrar.findConstant(name) != MTParserRegistrar::notFound;
        return !isOwn && !name.empty() && canBeWritten(name);
    }

    /// Whether an expression can use the name and define it as a variable.
    bool canBeWritten(const std::wstring& name) const
    {
        const MTParserRegistrar& registrar = names.registrar();
        constexpr std::wstring_view readOtherwise = L" .[]";
        const auto isPlain = [&](wchar_t character) {
            return registrar.getPlainCharacters().contains(character) &&
                   std::find(readOtherwise.begin(), readOtherwise.end(), character) == readOtherwise.end();
        };
        return !registrar.isNumber(name) && std::all_of(name.begin(), name.end(), isPlain);
    }

    void addHostNames()
    {
        for (const HostName& hostName : hostNames)
        {
            Candidate candidate{};
            candidate.kind = TokenKind::HostName;
            candidate.name = hostName.name;
            candidate.notes = hostName.notes;
            candidate.valueKind = hostName.notes == nullptr ? ValueKind::Unknown : hostName.notes->kind;
            addName(candidate);
        }
    }

    void addName(const Candidate& candidate)
    {
        const std::wstring_view description =
            candidate.notes == nullptr ? std::wstring_view() : candidate.notes->description;
        const Match match = matchOf(candidate.name, description, place.typed);
        if (match != Match::None && isReadAsName(candidate.name) && (place.assigns || takesName(candidate)))
        {
            add(candidate, match);
        }
    }

    bool takesName(const Candidate& candidate)
    {
        if (candidate.kind == TokenKind::Constant)
        {
            return isTaken(candidate.name);
        }
        const bool mayBeEither = candidate.valueKind == ValueKind::Unknown || candidate.valueKind == ValueKind::Either;
        return mayBeEither ? takesEither() : takesKind(candidate.valueKind);
    }

    /// Adds each function once: its first overload that is accepted.
    void addFunctions()
    {
        std::unordered_set<std::wstring_view> seen;
        for (const FunctionFacts& facts : allFunctions())
        {
            const Match match = matchOfFunction(facts);
            if (match == Match::None || seen.count(facts.symbol) != 0 || !takesCall(facts))
            {
                continue;
            }
            seen.insert(facts.symbol);
            if (keepsLimit(insertedCall(facts).size()))
            {
                Candidate candidate{};
                candidate.kind = TokenKind::Function;
                candidate.name = facts.symbol;
                candidate.function = &facts;
                candidate.valueKind = facts.resultKind;
                add(candidate, match);
            }
        }
    }

    Match matchOfFunction(const FunctionFacts& facts) const
    {
        const Match match = matchOf(facts.symbol, facts.description, place.typed);
        const auto isMeantUnit = [this](const VocabularyUnit* unit) {
            return std::find(meantUnits.begin(), meantUnits.end(), unit) != meantUnits.end();
        };
        const bool isConversion = isMeantUnit(facts.argumentUnit) || isMeantUnit(facts.resultUnit);
        return match == Match::None && isConversion ? Match::Meaning : match;
    }

    /// The part of a call that the text after the cursor does not already contain.
    std::wstring_view insertedCall(const FunctionFacts& facts) const
    {
        const bool opensBracket = place.following == L'[' || place.precedesWord;
        return std::wstring_view(facts.call)
            .substr(0, place.following == L'(' ? facts.symbol.size()
                       : opensBracket          ? facts.symbol.size() + 1
                                               : facts.call.size());
    }

    void add(const Candidate& candidate, Match match)
    {
        const bool isUnavailable = candidate.notes != nullptr && !candidate.notes->unavailable.empty();
        const bool isUnknown = candidate.valueKind == ValueKind::Unknown || isUnavailable;
        const bool isOther = (place.wanted == ValueKind::Number || place.wanted == ValueKind::Point) &&
                             candidate.valueKind != place.wanted;
        const auto recent = std::find(options.recent.begin(), options.recent.end(), candidate.name);
        candidates.push_back(candidate);
        candidates.back().rank = {isUnknown,
                                  match,
                                  isOther,
                                  static_cast<std::size_t>(recent - options.recent.begin()),
                                  candidate.name.size(),
                                  candidates.size()};
    }

    CompletionItem itemOf(const Candidate& candidate) const
    {
        CompletionItem item;
        item.kind = candidate.kind;
        item.name = candidate.name;
        item.edit = {place.replaced, item.name};
        item.valueKind = candidate.valueKind;
        if (candidate.value != nullptr)
        {
            item.value = *candidate.value;
        }
        if (candidate.notes != nullptr)
        {
            item.description = candidate.notes->description;
            item.unavailable = candidate.notes->unavailable;
        }
        if (candidate.function != nullptr)
        {
            item.description = candidate.function->description;
            item.edit.replacement = insertedCall(*candidate.function);
        }
        item.selection = selectionOf(item.edit.replacement, item.name.size());
        return item;
    }

    /// The arguments of an inserted call; otherwise an empty span after the insertion.
    TextSpan selectionOf(std::wstring_view inserted, std::size_t nameLength) const
    {
        const bool hasArguments = inserted.size() > nameLength + 1;
        const std::size_t start = hasArguments ? nameLength + 1 : inserted.size();
        const std::size_t end = hasArguments ? inserted.size() - 1 : inserted.size();
        return {static_cast<std::uint32_t>(place.replaced.start + start), static_cast<std::uint32_t>(end - start)};
    }

    const MathExpression& expression;
    const TextReading& reading;
    const KnownNames& names;
    const CompletionOptions& options;
    const CompletedPlace place;
    Trial trial;
    std::vector<const VocabularyUnit*> meantUnits;  // that the typed word may mean
    std::vector<std::wstring> indexed;              // matching names of the index
    std::deque<NameNotes> askedNotes;
    std::vector<HostName> hostNames;
    std::optional<bool> takesNumber;
    std::optional<bool> takesPoint;
    std::map<std::tuple<std::size_t, ValueKind, ValueKind>, bool> takesCalls;  // by signature
    std::vector<Candidate> candidates;
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
