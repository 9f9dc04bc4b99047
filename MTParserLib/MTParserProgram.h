// MTParserProgram.h - the compiled program: what the compiler hands to the evaluator.
//
// Records in postfix order: the operands of a record are the sub-programs that end just before it, the last operand
// last; the final record is the root. Each record's result goes straight to its destination, the slot of the record
// that consumes it, so that evaluating is one pass over the records without a stack. A finished program holds no
// placeholder, and no constant but, perhaps, its root: the values of the others already stand in the slots of their
// consumers.
#pragma once

#include "mathexpr/IMathExprItemEvaluator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// One step of the program.
struct MTProgramRecord
{
    enum class Kind : std::uint8_t
    {
        Constant,     ///< The value is known: a literal, a constant, or a folded record.
        Item,         ///< An operator, a function or a variable, evaluated each time.
        Placeholder,  ///< Marks, while compiling, where the arguments of a function call begin.
    };

    VALTYPE value;                                 ///< Of a constant; where the result of an unconsumed record goes.
    const IMathExprItemEvaluator* item = nullptr;  ///< Null but for an item.
    VALTYPE* args = nullptr;                       ///< One slot an argument, owned by the program.
    VALTYPE* destination = nullptr;                ///< Null, while compiling, until a record consumes this one.
    std::uint32_t nbArgs = 0;                      ///< Number of slots.
    std::uint32_t position = 0;                    ///< In the rewritten text, for error reports.
    std::size_t firstRecord = 0;                   ///< While compiling: where the sub-program that ends here begins.
    Kind kind = Kind::Constant;
};

/// Memory for argument slots. It hands out memory that never moves, takes it back in the reverse order, and keeps what
/// it has for the next program.
class MTSlotArena
{
public:
    /// How far the arena is used.
    struct Mark
    {
        std::size_t chunk = 0;
        std::size_t used = 0;
    };

    /// A contiguous array of all-zero slots; null for none.
    VALTYPE* allocate(std::size_t count);
    Mark mark() const noexcept { return top; }
    void release(Mark mark) noexcept { top = mark; }

private:
    struct Chunk
    {
        std::unique_ptr<VALTYPE[]> slots;
        std::size_t size;
    };
    std::vector<Chunk> chunks;
    Mark top;
};

/// The records of one expression and the slots that their results go to.
class MTParserProgram
{
public:
    /// Forgets the records and keeps the memory.
    void clear() noexcept;

    /// Ends the compiling: drops what only the compiler needs, and gives every record that nothing consumes a
    /// destination.
    void finish() noexcept;

    /// Whether there is something to evaluate: a program that is still being compiled is not complete.
    bool isComplete() const noexcept { return complete; }

    /// The value of the root: the result after a successful run.
    const VALTYPE& rootValue() const noexcept { return records.back().value; }

    std::vector<MTProgramRecord> records;
    MTSlotArena slots;

private:
    friend class MTProgramClaim;

    bool complete = false;
    bool claimed = false;
};

/// Claims a program for one call that compiles or runs it. While such a call waits for the host, in a look-up or a
/// message box, the host may call back: it then finds the program claimed, and must leave it alone.
class MTProgramClaim
{
public:
    explicit MTProgramClaim(MTParserProgram& program) noexcept : program(program), granted(!program.claimed)
    {
        program.claimed = true;
    }
    MTProgramClaim(const MTProgramClaim&) = delete;
    MTProgramClaim& operator=(const MTProgramClaim&) = delete;
    ~MTProgramClaim()
    {
        if (granted)
        {
            program.claimed = false;
        }
    }

    bool isGranted() const noexcept { return granted; }

private:
    MTParserProgram& program;
    const bool granted;
};
