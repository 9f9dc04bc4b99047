// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineItems.h - items with any symbol, which record their deletion.
#pragma once

#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "mathexpr/IMathVariableFactory.h"

#include <string>
#include <utility>

/// Counts deletions if a test needs it.
class DeletionCounter
{
public:
    explicit DeletionCounter(int* count) : nbDeleted(count) {}
    DeletionCounter(const DeletionCounter&) = delete;
    DeletionCounter& operator=(const DeletionCounter&) = delete;
    ~DeletionCounter()
    {
        if (nbDeleted != nullptr)
        {
            ++*nbDeleted;
        }
    }

private:
    int* nbDeleted;
};

class TestOperator final : public IMathOperator
{
public:
    explicit TestOperator(std::wstring name, bool isUnary = false, std::int32_t binds = 1, int* nbDeleted = nullptr)
        : symbol(std::move(name)), unary(isUnary), precedence(binds), deletions(nbDeleted)
    {}

    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool) const override
    {
        result.x = nbArgs == 1 ? -args[0].x : args[0].x + args[1].x;
        return true;
    }
    std::int32_t getPrecedence() const override { return precedence; }
    std::wstring getSymbol() const override { return symbol; }
    bool isUnaryOp() const override { return unary; }

private:
    std::wstring symbol;
    bool unary;
    std::int32_t precedence;
    DeletionCounter deletions;
};

/// Its value is the number of its arguments.
class TestFunction final : public IMathFunction
{
public:
    explicit TestFunction(std::wstring name, std::uint32_t count = 1, int* nbDeleted = nullptr)
        : symbol(std::move(name)), nbArgs(count), deletions(nbDeleted)
    {}

    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool evaluate(std::uint32_t nbGiven, const VALTYPE*, VALTYPE& result, bool) const override
    {
        result.x = nbGiven;
        return true;
    }
    std::wstring getSymbol() const override { return symbol; }
    std::uint32_t getNbArgs() const override { return nbArgs; }

private:
    std::wstring symbol;
    std::uint32_t nbArgs;
    DeletionCounter deletions;
};

class TestVariable final : public IMathVariable
{
public:
    explicit TestVariable(std::wstring givenName, int* nbDeleted = nullptr)
        : name(std::move(givenName)), deletions(nbDeleted)
    {}

    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const override
    {
        result = value;
        return true;
    }
    std::wstring getSymbol() const override { return name; }
    VALTYPE* getValuePtr() override { return &value; }

private:
    std::wstring name;
    VALTYPE value;
    DeletionCounter deletions;
};

/// A variable without a value slot.
class SlotlessVariable final : public IMathVariable
{
public:
    explicit SlotlessVariable(std::wstring givenName, int* nbDeleted = nullptr)
        : name(std::move(givenName)), deletions(nbDeleted)
    {}

    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override { return true; }
    std::wstring getSymbol() const override { return name; }
    VALTYPE* getValuePtr() override { return nullptr; }

private:
    std::wstring name;
    DeletionCounter deletions;
};

class SlotlessFactory final : public IMathVariableFactory
{
public:
    explicit SlotlessFactory(int* nbDeleted = nullptr) : deletions(nbDeleted) {}

    IMathVariable* create(const wchar_t* name) override { return new SlotlessVariable(name, deletions); }

private:
    int* deletions;
};

/// Creates test variables, or none.
class TestFactory final : public IMathVariableFactory
{
public:
    explicit TestFactory(bool makesAny = true, int* nbDeleted = nullptr) : makes(makesAny), deletions(nbDeleted) {}

    IMathVariable* create(const wchar_t* name) override { return makes ? new TestVariable(name, deletions) : nullptr; }

private:
    bool makes;
    int* deletions;
};
