// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileProgram.cpp - converts the steps of a program to tile code, one by one.
#include "MTParserLib/tiles/MTTileProgram.h"

#include "MTParserLib/tiles/MTTileWorker.h"
#include "MTParserLib/tiles/TileFormulas.h"
#include "MTParserLib/vocabulary/Conversions.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

namespace {

/// Upper bound on the places, which bounds the memory of a thread; more would not fit in the cache.
constexpr std::size_t mostPlaces = 4096;

/// Upper bound on consecutive steps without a pause. A compiler that does not optimise compiles the jumps from step to
/// step as nested calls.
constexpr std::size_t stepsPerPause = 128;

constexpr std::size_t widthOf(const VALTYPE& value) noexcept
{
    return value.type != 0 ? 3 : 1;
}

template <class... Formulas>
bool mayRefuseNumbers(std::uint8_t formula, tiles::FormulaList<Formulas...>)
{
    static constexpr bool refuse[] = {
        (formulas::mayRefuse<Formulas, double> || formulas::mayRefuse<Formulas, double, double>)...};
    return refuse[formula];
}

/// Calls an item with records, for each row of a tile.
bool callWithRecords(const MTTileStep& step, const MTTileContext& context)
{
    const MTTileRecordCall& call = *step.records;
    VALTYPE* const args = static_cast<const MTTileWorkerContext&>(context).args;
    std::uint32_t refusals = Message::None;
    for (std::size_t row = 0; row < context.nbRows; ++row)
    {
        for (std::size_t j = 0; j < call.operands.size(); ++j)
        {
            const MTTileRecordCall::Operand& operand = call.operands[j];
            args[j] = operand.record;
            if (!operand.uniform)
            {
                std::memcpy(&args[j].x, context.places[operand.place] + widthOf(operand.record) * row,
                            widthOf(operand.record) * sizeof(double));
            }
        }
        VALTYPE& result = args[call.operands.size()];
        refusals |= evaluateItem(*call.item, nullptr, args, static_cast<std::uint32_t>(call.operands.size()));
        std::memcpy(context.places[step.result] + widthOf(result) * row, &result.x, widthOf(result) * sizeof(double));
    }
    return refusals != Message::None;
}

}

class MTTileProgram::Builder
{
public:
    Builder(const MTParserProgram& source, platform::ArrayView<const MTBoundColumn> columns, const MTTileSet& set)
        : program(source), target(new MTTileProgram(set))
    {
        for (const VALTYPE& slot : program.slots)
        {
            values.push_back(uniformValue(slot));
        }
        for (const VALTYPE* input : program.inputs)
        {
            values.push_back(uniformValue(*input));
        }
        for (const MTBoundColumn& column : columns)
        {
            VALTYPE sample;
            sample.type = column.column.kind == mathexpr::BulkKind::Point ? 1 : 0;
            setOnes(sample);
            const std::uint32_t place = addPlace(widthOf(sample));
            const MTPlace input = program.findInput(*column.variable);
            if (input != noPlace)
            {
                valueAt(input) = {sample, false, false, place};
            }
        }
        result = addPlace(0);
    }

    std::unique_ptr<const MTTileProgram> build()
    {
        // A root that copies a variable has a flag and coordinates of its own, which tiles do not hold.
        const bool built =
            program.steps.back().nbArgs != 0 && std::all_of(program.steps.begin(), program.steps.end(),
                                                            [this](const MTProgramStep& step) { return add(step); });
        if (!built || target->places.size() > mostPlaces)
        {
            return nullptr;
        }
        const Value& root = valueAt(program.getRootPlace());
        if (root.uniform)
        {
            return nullptr;
        }
        target->rootHead = root.sample;
        target->places[result].width = widthOf(root.sample);
        emitEnd(root);
        return std::move(target);
    }

private:
    /// The result of a step, or the value of a variable.
    struct Value
    {
        VALTYPE sample;  // with 1 for the parts that differ between rows
        bool uniform;
        bool isBuffer;        // whether the place is a buffer, which can be reused
        std::uint32_t place;  // unless the value is uniform or in the registers
    };

    struct Operand
    {
        MTPlace origin;
        Value value;

        bool isPoint() const noexcept { return value.sample.type != 0; }
    };

    /// A step that computes a formula of two numbers in places, after another step.
    struct Joinable
    {
        std::size_t end = 0;  // number of steps up to and including it; 0 if there is none
        std::uint8_t formula = noTileFormula;
    };

    static Value uniformValue(const VALTYPE& value) noexcept { return {value, true, false, 0}; }

    bool add(const MTProgramStep& step)
    {
        if (step.nbArgs == 0)
        {
            return addCopy(step);
        }
        if (isHostItem(*step.kernels) || !step.item->isConstant())
        {
            return false;
        }
        operands.clear();
        for (std::uint32_t j = 0; j < step.nbArgs; ++j)
        {
            operands.push_back({step.operand(j), valueAt(step.operand(j))});
        }
        Value yielded{};
        if (!evaluateOnce(*step.kernels, step.nbArgs, yielded.sample))
        {
            return false;
        }
        yielded.uniform =
            std::all_of(operands.begin(), operands.end(), [](const Operand& operand) { return operand.value.uniform; });
        if (!yielded.uniform)
        {
            setOnes(yielded.sample);
            emit(step, yielded);
        }
        valueAt(step.result) = yielded;
        return true;
    }

    /// A variable that would be copied for its consumer is read in its own place here.
    bool addCopy(const MTProgramStep& step)
    {
        if (step.isCopy())
        {
            valueAt(step.result) = valueAt(step.first);
        }
        return step.isCopy();
    }

    Value& valueAt(MTPlace place) noexcept
    {
        return values[place < firstInput ? place : program.slots.size() + (place - firstInput)];
    }

    bool evaluateOnce(const MTItemKernels& item, std::uint32_t nbArgs, VALTYPE& yielded)
    {
        args.clear();
        for (const Operand& operand : operands)
        {
            args.push_back(operand.value.sample);
        }
        args.emplace_back();
        try
        {
            const bool isEvaluated = evaluateItem(item, nullptr, args.data(), nbArgs) == Message::None;
            yielded = args.back();
            return isEvaluated;
        }
        catch (const mathexpr::ParsingException&)
        {
            return false;
        }
    }

    void emit(const MTProgramStep& step, Value& yielded)
    {
        if (target->steps.size() - lastPause >= stepsPerPause)
        {
            pushWaiting();
            append(target->set.findControl(MTTileControl::Pause));
            lastPause = target->steps.size();
        }
        const MTItemKernels& item = *step.kernels;
        if (item.formula != nullptr)
        {
            emitScaling(*item.formula, step.result, yielded);
        }
        else if (!emitFormula(item.tileFormula, step.result, yielded))
        {
            emitCall(item, yielded);
        }
        for (const Operand& operand : operands)
        {
            if (operand.value.isBuffer)
            {
                unusedBuffers[widthOf(operand.value.sample)].push_back(operand.value.place);
            }
        }
    }

    /// "&" of points is their product here: points that differ between rows are not flagged.
    /// @return false if the formula has no kernel for the current operands
    bool emitFormula(std::uint8_t formula, MTPlace slot, Value& yielded)
    {
        const bool makesPoint = formula == tiles::formulaIndex<formulas::MakePoint>;
        if (formula == noTileFormula || operands.size() > 3)
        {
            return false;
        }
        if (makesPoint)
        {
            operands.resize(3, {noPlace, uniformValue(VALTYPE{})});
        }
        const MTTileOperands form = formOf();
        const MTTileKernel kernel = target->set.findKernel(formula, form);
        if (kernel == nullptr || (makesPoint && takesPoint()))
        {
            return false;
        }
        mayRefuse = mayRefuse || mayRefuseNumbers(formula, tiles::VectorFormulas());
        using Form = MTTileOperands;
        const bool consumesWaiting =
            form != Form::ThreeNumbers && std::any_of(operands.begin(), operands.end(),
                                                      [this](const Operand& operand) { return isWaiting(operand); });
        if (yielded.sample.type == 0 && !consumesWaiting)
        {
            pushWaiting();
        }
        std::array<std::uint32_t, 3> taken{};
        for (std::size_t j = 0; j < operands.size(); ++j)
        {
            taken[j] = consumesWaiting && isWaiting(operands[j]) ? 0 : placeOf(operands[j]);
        }
        if (consumesWaiting)
        {
            waiting = noPlace;
        }
        if (yielded.sample.type == 0)
        {
            waiting = slot;
        }
        else if (slot == program.getRootPlace() && !mayRefuse)
        {
            yielded.place = result;
        }
        else
        {
            takeBuffer(yielded);
        }
        if (!join(formula, form, taken[0]))
        {
            append(kernel, taken, yielded.place);
            const bool isFirst = target->steps.size() == 1;
            if (!isFirst && isInPlaces(form) && formula < tiles::nbJoinedFormulas)
            {
                joinable = {target->steps.size(), formula};
            }
        }
        return true;
    }

    static bool isInPlaces(MTTileOperands form)
    {
        using Form = MTTileOperands;
        return form == Form::Memory || form == Form::MemoryUniform || form == Form::UniformMemory;
    }

    /// Fuses a formula with the step before it, whose operand, the value, was pushed to make way for it.
    ///     push value -> t;  * x, y -> value;  + t, value -> value     becomes     *, +  value, x, y -> value
    bool join(std::uint8_t formula, MTTileOperands form, std::uint32_t first)
    {
        std::vector<MTTileStep>& emitted = target->steps;
        if (form != MTTileOperands::MemoryValue || formula >= tiles::nbJoinedFormulas ||
            joinable.end != emitted.size() || !isPush(*(emitted.end() - 2), first))
        {
            return false;
        }
        const MTTileStep before = emitted.back();
        emitted.resize(emitted.size() - 2);
        append(target->set.findJoined(joinable.formula, formula), {before.a, before.b});
        joinable = {};
        return true;
    }

    bool isPush(const MTTileStep& step, std::uint32_t place) const
    {
        return step.kernel == target->set.findControl(MTTileControl::Push) && step.result == place;
    }

    bool takesPoint() const
    {
        return std::any_of(operands.begin(), operands.end(), [](const Operand& operand) { return operand.isPoint(); });
    }

    /// The form that fits the kinds and places of the current operands.
    MTTileOperands formOf() const
    {
        using Form = MTTileOperands;
        const Operand& first = operands[0];
        const Operand& last = operands.back();
        if (operands.size() == 3)
        {
            return isWaiting(last) ? Form::TwoAndValue : Form::ThreeNumbers;
        }
        if (operands.size() == 1 && first.isPoint())
        {
            return Form::Point;
        }
        if (first.isPoint() && last.isPoint())
        {
            return Form::Points;
        }
        if (first.isPoint())
        {
            return isWaiting(last) ? Form::PointValue : last.value.uniform ? Form::PointUniform : Form::PointMemory;
        }
        if (last.isPoint())
        {
            return isWaiting(first) ? Form::ValuePoint : first.value.uniform ? Form::UniformPoint : Form::MemoryPoint;
        }
        if (isWaiting(first))
        {
            return last.value.uniform ? Form::ValueUniform : Form::Value;
        }
        if (isWaiting(last))
        {
            return first.value.uniform ? Form::UniformValue : Form::MemoryValue;
        }
        return first.value.uniform ? Form::UniformMemory : last.value.uniform ? Form::MemoryUniform : Form::Memory;
    }

    /// Emits a conversion: multiplications and divisions by its factors, one by one.
    void emitScaling(const ConversionFormula& formula, MTPlace slot, Value& yielded)
    {
        Operand& operand = operands[0];
        const platform::ArrayView<const double> factors = formula.getFactors();
        if (!isWaiting(operand))
        {
            if (factors.empty())
            {
                yielded.place = operand.value.place;
                yielded.isBuffer = operand.value.isBuffer;
                operand.value.isBuffer = false;
                return;
            }
            pushWaiting();
        }
        for (std::size_t j = 0; j < factors.size(); ++j)
        {
            VALTYPE factor;
            factor.x = factors[j];
            const bool takesValue = j > 0 || isWaiting(operand);
            const std::uint8_t formulaOfFactor =
                formula.divides(j) ? tiles::formulaIndex<formulas::Div> : tiles::formulaIndex<formulas::Mult>;
            const auto form = takesValue ? MTTileOperands::ValueUniform : MTTileOperands::MemoryUniform;
            append(target->set.findKernel(formulaOfFactor, form),
                   {takesValue ? 0 : placeOf(operand), placeOfUniform(factor)});
        }
        waiting = slot;
    }

    void emitCall(const MTItemKernels& item, Value& yielded)
    {
        mayRefuse = true;
        pushWaiting();
        const bool byRecords = item.tileCall == nullptr || takesPoint();
        std::array<std::uint32_t, 3> taken{};
        const MTTileRecordCall* records = nullptr;
        if (byRecords)
        {
            auto call = std::make_unique<MTTileRecordCall>(MTTileRecordCall{&item, {}});
            for (const Operand& operand : operands)
            {
                call->operands.push_back({operand.value.sample, operand.value.uniform, operand.value.place});
            }
            target->mostArgs = std::max(target->mostArgs, operands.size());
            records = target->recordCalls.emplace_back(std::move(call)).get();
        }
        else
        {
            std::transform(operands.begin(), operands.end(), taken.begin(),
                           [this](Operand& operand) { return placeOf(operand); });
        }
        takeBuffer(yielded);
        append(target->set.findControl(MTTileControl::Call), taken, yielded.place,
               byRecords ? callWithRecords : item.tileCall, records);
    }

    void emitEnd(const Value& root)
    {
        using Control = MTTileControl;
        const Control control = waiting == program.getRootPlace() ? Control::End
                                : root.place == result            ? Control::Stop
                                : root.sample.type != 0           ? Control::EndPoints
                                                                  : Control::EndNumbers;
        append(target->set.findControl(control), {root.place}, result);
    }

    void append(MTTileKernel kernel, std::array<std::uint32_t, 3> taken = {}, std::uint32_t to = 0,
                MTTileCall call = nullptr, const MTTileRecordCall* records = nullptr)
    {
        target->steps.push_back({kernel, taken[0], taken[1], taken[2], to, call, records});
    }

    bool isWaiting(const Operand& operand) const noexcept { return waiting != noPlace && operand.origin == waiting; }

    /// Stores the value in the registers, to make them available for another one.
    void pushWaiting()
    {
        if (waiting == noPlace)
        {
            return;
        }
        Value& value = valueAt(waiting);
        takeBuffer(value);
        append(target->set.findControl(MTTileControl::Push), {}, value.place);
        const auto own = std::find_if(operands.begin(), operands.end(),
                                      [this](const Operand& operand) { return isWaiting(operand); });
        if (own != operands.end())
        {
            own->value = value;
        }
        waiting = noPlace;
    }

    std::uint32_t placeOf(Operand& operand)
    {
        if (isWaiting(operand))
        {
            pushWaiting();
        }
        return operand.value.uniform ? placeOfUniform(operand.value.sample) : operand.value.place;
    }

    std::uint32_t placeOfUniform(const VALTYPE& value)
    {
        std::array<std::uint64_t, 4> bits{value.type};
        std::memcpy(&bits[1], &value.x, widthOf(value) * sizeof(double));
        const auto [place, isNew] = uniforms.try_emplace(bits, 0);
        if (isNew)
        {
            place->second = addPlace(widthOf(value));
            target->places.back().uniform = true;
            target->places.back().value = value;
        }
        return place->second;
    }

    /// Call before the operands' buffers are released, so that a kernel never writes where it reads.
    void takeBuffer(Value& value)
    {
        const std::size_t width = widthOf(value.sample);
        std::vector<std::uint32_t>& unused = unusedBuffers[width];
        value.isBuffer = true;
        if (unused.empty())
        {
            value.place = addPlace(width);
            return;
        }
        value.place = unused.back();
        unused.pop_back();
    }

    std::uint32_t addPlace(std::size_t width)
    {
        target->places.push_back({width, false, VALTYPE{}});
        return static_cast<std::uint32_t>(target->places.size() - 1);
    }

    const MTParserProgram& program;
    std::unique_ptr<MTTileProgram> target;
    std::vector<Value> values;                                        // of the slots, then of the inputs
    MTPlace waiting = noPlace;                                        // whose value is in the registers
    std::vector<Operand> operands;                                    // of the current step
    std::vector<VALTYPE> args;                                        // of the current step, followed by its result
    std::map<std::array<std::uint64_t, 4>, std::uint32_t> uniforms;   // by kind and bits
    std::map<std::size_t, std::vector<std::uint32_t>> unusedBuffers;  // by width
    std::uint32_t result = 0;
    std::size_t lastPause = 0;
    Joinable joinable;
    bool mayRefuse = false;
};

std::unique_ptr<const MTTileProgram> MTTileProgram::build(const MTParserProgram& program,
                                                          platform::ArrayView<const MTBoundColumn> columns,
                                                          const MTTileSet& set)
{
    return Builder(program, columns, set).build();
}
