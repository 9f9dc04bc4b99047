// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableStage.h - one expression over the rows of a batch: reads columns of the table and results of earlier stages.
#pragma once

#include "tools/calc/Calculator.h"
#include "tools/calc/options/Options.h"
#include "tools/calc/table/TableBatch.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

class TableStage
{
public:
    /// What a name in the expression stands for.
    struct Source
    {
        std::wstring name;
        std::size_t index;  ///< Of a column of the batch, or of a stage.
        bool isStage;
    };

    /// @param options  outlives the stage
    /// @param name     of its results
    TableStage(const Options& options, std::string expression, std::string name);

    /// The names that the expression may read have to be defined before it is compiled.
    Calculator& calculator() { return compiled; }
    const std::string& expression() const { return text; }
    const std::string& name() const { return resultName; }

    void setSources(std::vector<Source> newSources) { sources = std::move(newSources); }
    const std::vector<Source>& readsFrom() const { return sources; }

    /// @param stages  all of them, this one behind those that it reads
    void evaluate(const TableBatch& batch, const std::deque<TableStage>& stages);

    /// Whether the expression has no value for a row whose cells are in order.
    bool isRefused(std::size_t row) const;
    const VALTYPE& result(std::size_t row) const { return results[row]; }

    /// Why the expression has no value for a row: what it says when it is computed for this row alone.
    std::string refusal(const TableBatch& batch, const std::deque<TableStage>& stages, std::size_t row) const;

private:
    static Options withoutEvaluation(Options given);
    std::size_t endOfKind(const std::deque<TableStage>& stages, std::size_t begin, std::size_t end) const;
    void evaluateRows(const TableBatch& batch, const std::deque<TableStage>& stages, std::size_t begin,
                      std::size_t end);

    const Options* options;
    Options compileOptions;
    Calculator compiled;
    std::string text;
    std::string resultName;
    std::vector<Source> sources;
    std::vector<VALTYPE> results;
    std::vector<std::uint32_t> status;
};

/// Gives a calculator the names of the host.
/// @return what went wrong; empty where nothing did
std::string defineHostNames(Calculator& calculator, const Options& options);
