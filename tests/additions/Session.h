// Session.h - one expression object under test, with a host that answers a few names, and all that a text makes it do.
#pragma once

#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "tests/MadeValues.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// While one lives, messages of this process are recorded instead of shown.
class ShownMessages
{
public:
    ShownMessages();
    ShownMessages(const ShownMessages&) = delete;
    ShownMessages& operator=(const ShownMessages&) = delete;
    ~ShownMessages();

    std::vector<std::uint32_t> ids;
    std::vector<std::wstring> texts;
    std::function<void()> whileShown;

private:
    static void show(void* self, std::uint32_t id, const wchar_t* text);

    MessageDisplay before;
};

class Host final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;

    std::map<std::wstring, VALTYPE> names;
    mutable std::vector<std::wstring> asked;
};

/// What became of one text.
struct Outcome
{
    bool compiled = false;
    bool evaluated = false;
    std::optional<SMTParsingExcepData> parsing;
    std::optional<SMTDefExcepData> definition;
    std::vector<std::uint32_t> messages;
    std::vector<std::wstring> messageTexts;
    VALTYPE value;
};

class Session
{
public:
    explicit Session(bool silent);

    Outcome run(const wchar_t* text);
    ExpressionDiagnostic diagnostic() { return ExpressionDiagnostics(expression).get(); }

    Host host;
    ShownMessages shown;
    MathExpression expression;
};
