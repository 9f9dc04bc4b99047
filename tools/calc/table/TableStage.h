// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TableStage.h - an expression over the rows of a batch. It reads columns of the table and results of earlier stages.
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
    /// What a name in the expression refers to.
    struct Source
    {
        std::wstring name;
        std::size_t index;  ///< Of a column of the batch, or of a stage.
        bool isStage;
    };

    /// @param options  must outlive the stage
    /// @param name     of its results
    TableStage(const Options& options, std::string expression, std::string name);

    /// Names that the expression may read must be defined before it is compiled.
    Calculator& calculator() { return compiled; }
    const std::string& expression() const { return text; }
    const std::string& name() const { return resultName; }

    void setSources(std::vector<Source> newSources) { sources = std::move(newSources); }
    const std::vector<Source>& readsFrom() const { return sources; }

    /// @param stages  all stages, this one after those that it reads
    void evaluate(const TableBatch& batch, const std::deque<TableStage>& stages);

    /// Whether the expression has no value for a well-formed row.
    bool isRefused(std::size_t row) const;
    const VALTYPE& result(std::size_t row) const { return results[row]; }

    /// Why the expression has no value for a row: the error of evaluating it for this row alone.
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

/// Defines the names of the host in a calculator.
/// @return an error message; empty on success
std::string defineHostNames(Calculator& calculator, const Options& options);
