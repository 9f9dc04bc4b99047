// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// bulk.cpp - time per row of bulk evaluation, of a native loop over the same columns, and of calling evaluate for each
// row. The reported times cover all rows of a run; the counter "items" is their number.
//
// First, all results are compared with native code; the program fails if a bit differs.
#include "benchmarks/Checks.h"
#include "benchmarks/Formulas.h"
#include "benchmarks/NativeBulk.h"
#include "benchmarks/engines/MathexprEngine.h"
#include "mathexpr/BulkEvaluation.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t nbRowsCached = 10'000;     // fit in the caches nearest to a processor
constexpr std::size_t nbRowsShared = 1'000'000;  // enough to be shared by threads

using Native = void (*)(const Columns& in, double* results, std::size_t nbRows);

struct BulkFormula
{
    std::size_t number;  // index of the formula
    Native native;
    Native nativeWide;  // with -O3 for this processor
};

#define BULK_FORMULA(number, name)                                                                                     \
    {                                                                                                                  \
        number, nativebulk::name, nativebulkwide::name                                                                 \
    }

constexpr BulkFormula bulkFormulas[] = {
    BULK_FORMULA(1, increment),        BULK_FORMULA(4, nestedArithmetic), BULK_FORMULA(6, lengthByProducts),
    BULK_FORMULA(7, trigonometry),     BULK_FORMULA(9, comparisons),      BULK_FORMULA(10, polynomial),
    BULK_FORMULA(14, pointArithmetic), BULK_FORMULA(15, distance),        BULK_FORMULA(16, direction),
    BULK_FORMULA(19, packing),
};

Columns makeColumns(std::size_t count)
{
    std::mt19937_64 generator(1);
    Columns columns;
    for (std::size_t row = 0; row < count; ++row)
    {
        const Inputs in = randomInputs(generator);
        columns.x.push_back(in.x);
        columns.y.push_back(in.y);
        columns.z.push_back(in.z);
        columns.a.push_back(in.a);
        columns.b.push_back(in.b);
        columns.r.push_back(in.r);
        columns.p.push_back(in.p);
        columns.q.push_back(in.q);
    }
    return columns;
}

/// One formula over a number of rows, computed in all ways.
class Candidate
{
public:
    Candidate(const BulkFormula& wanted, std::size_t count)
        : formula(wanted), columns(makeColumns(count)), rowCount(count),
          isPoint(formulas()[wanted.number - 1].isPoint()), results(isPoint ? 3 * count : count)
    {
        const Formula& text = formulas()[wanted.number - 1];
        const std::wstring wide(text.text.begin(), text.text.end());
        for (const auto& [name, column] : numberColumns())
        {
            mathexpr::setVariable(expression, name, VALTYPE{});
            bound.push_back({name, column->data()});
        }
        VALTYPE point;
        point.type = 1;
        for (const auto& [name, column] : pointColumns())
        {
            mathexpr::setVariable(expression, name, point);
            bound.push_back({name, &column->front().x, sizeof(Point), mathexpr::BulkKind::Point});
        }
        expression.setExpression(wide.c_str());
        for (const Component& component : componentsOf(text.variables))
        {
            const wchar_t name[] = {static_cast<wchar_t>(component.variable), L'\0'};
            const auto column = std::find_if(bound.begin(), bound.end(), [&](const mathexpr::BulkColumn& one) {
                return *one.name == component.variable;
            });
            const std::size_t coordinate =
                column->kind == mathexpr::BulkKind::Point ? static_cast<std::size_t>(component.name.back() - 'x') : 0;
            VALTYPE* const record = mathexpr::getVariableAddress(expression, name);
            slots.push_back({coordinate == 1   ? &record->y
                             : coordinate == 2 ? &record->z
                                               : &record->x,
                             column->data + coordinate, static_cast<std::size_t>(column->stride) / sizeof(double)});
        }
    }

    std::size_t nbRows() const { return rowCount; }

    void runNative() { formula.native(columns, results.data(), rowCount); }
    void runNativeWide() { formula.nativeWide(columns, results.data(), rowCount); }

    void runBulk(std::uint32_t nbThreads)
    {
        mathexpr::BulkOutcome outcome;
        const mathexpr::BulkResults target =
            isPoint ? mathexpr::BulkResults{results.data(), sizeof(Point), mathexpr::BulkKind::Point}
                    : mathexpr::BulkResults{results.data()};
        mathexpr::evaluateBulk(expression, bound.data(), bound.size(), rowCount, target, nbThreads, outcome);
    }

    void runRowByRow()
    {
        VALTYPE value;
        for (std::size_t row = 0; row < rowCount; ++row)
        {
            for (const Slot& slot : slots)
            {
                *slot.variable = slot.column[row * slot.stride];
            }
            expression.evaluate(value);
            if (isPoint)
            {
                results[3 * row] = value.x;
                results[3 * row + 1] = value.y;
                results[3 * row + 2] = value.z;
            }
            else
            {
                results[row] = value.x;
            }
        }
    }

    bool isExact()
    {
        runNative();
        const std::vector<double> expected = results;
        const auto same = [&] { return std::equal(results.begin(), results.end(), expected.begin(), sameBits); };
        runNativeWide();
        bool exact = same();
        results.assign(results.size(), 0.0);
        runBulk(1);
        exact = exact && same();
        results.assign(results.size(), 0.0);
        runBulk(2);
        exact = exact && same();
        results.assign(results.size(), 0.0);
        runRowByRow();
        return exact && same();
    }

private:
    struct Slot
    {
        double* variable;
        const double* column;
        std::size_t stride;
    };

    std::vector<std::pair<const wchar_t*, const std::vector<double>*>> numberColumns() const
    {
        return {{L"x", &columns.x}, {L"y", &columns.y}, {L"z", &columns.z},
                {L"a", &columns.a}, {L"b", &columns.b}, {L"r", &columns.r}};
    }
    std::vector<std::pair<const wchar_t*, const std::vector<Point>*>> pointColumns() const
    {
        return {{L"p", &columns.p}, {L"q", &columns.q}};
    }

    BulkFormula formula;
    Columns columns;
    std::size_t rowCount;
    bool isPoint;
    std::vector<double> results;
    MathExpression expression{true, nullptr};
    std::vector<mathexpr::BulkColumn> bound;
    std::vector<Slot> slots;
};

template <class Run>
benchmark::internal::Benchmark* registerRun(std::size_t formula, const char* way,
                                            const std::shared_ptr<Candidate>& candidate, Run run)
{
    const std::string name = std::to_string(formula) + '/' + way;
    return benchmark::RegisterBenchmark(name.c_str(), [candidate, run](benchmark::State& state) {
        for ([[maybe_unused]] auto iteration : state)
        {
            run(*candidate);
            benchmark::ClobberMemory();
        }
        state.counters["items"] = static_cast<double>(candidate->nbRows());
    });
}

}

int main(int argc, char** argv)
{
    for (const BulkFormula& formula : bulkFormulas)
    {
        const auto candidate = std::make_shared<Candidate>(formula, nbRowsCached);
        if (!candidate->isExact())
        {
            std::fprintf(stderr, "formula %zu: results differ from native code\n", formula.number);
            return 1;
        }
        registerRun(formula.number, "native", candidate, [](Candidate& it) { it.runNative(); });
        registerRun(formula.number, "native O3", candidate, [](Candidate& it) { it.runNativeWide(); });
        registerRun(formula.number, "mathexpr", candidate, [](Candidate& it) { it.runBulk(1); });
        registerRun(formula.number, "row by row", candidate, [](Candidate& it) { it.runRowByRow(); });
        const auto shared = std::make_shared<Candidate>(formula, nbRowsShared);
        registerRun(formula.number, "1 thread", shared, [](Candidate& it) { it.runBulk(1); })->UseRealTime();
        registerRun(formula.number, "2 threads", shared, [](Candidate& it) { it.runBulk(2); })->UseRealTime();
        benchmark::AddCustomContext("formula " + std::to_string(formula.number), formulas()[formula.number - 1].title);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
