// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// resources.cpp - this library's allocations during evaluation and compilation, and the memory of an expression object
// and of a compiled program. Prints one JSON object.
//
// Replaces operator new to count all allocations of the process, including those of the shared library.
#include "benchmarks/Formulas.h"
#include "benchmarks/engines/FparserEngine.h"
#include "benchmarks/engines/MathexprEngine.h"
#include "benchmarks/engines/MuparserEngine.h"
#include "benchmarks/engines/MuparserxEngine.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

std::size_t nbAllocations = 0;
std::size_t liveBytes = 0;

/// Heap memory of a block, including its header.
std::size_t sizeOnHeap(void* block)
{
    return malloc_usable_size(block) + sizeof(std::size_t);
}

void* counted(void* block)
{
    if (block == nullptr)
    {
        throw std::bad_alloc();
    }
    ++nbAllocations;
    liveBytes += sizeOnHeap(block);
    return block;
}

void release(void* block)
{
    if (block != nullptr)
    {
        liveBytes -= sizeOnHeap(block);
        std::free(block);
    }
}

}

void* operator new(std::size_t size)
{
    return counted(std::malloc(size));
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    return counted(aligned_alloc(static_cast<std::size_t>(alignment), size));
}

void operator delete(void* block) noexcept
{
    release(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}

void operator delete(void* block, std::align_val_t) noexcept
{
    release(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    release(block);
}

namespace {

/// Number of allocations in the body.
template <class Body>
std::size_t allocationsOf(Body body)
{
    const std::size_t before = nbAllocations;
    body();
    return nbAllocations - before;
}

void evaluate(MathexprEngine& engine, const Formula& formula)
{
    formula.isPoint() ? static_cast<void>(engine.point()) : static_cast<void>(engine.number());
}

std::size_t allocationsPerThousandEvaluations()
{
    std::size_t most = 0;
    for (const Formula& formula : formulas())
    {
        MathexprEngine engine;
        engine.prepare(formula);
        most = std::max(most, allocationsOf([&] {
                            for (int i = 0; i < 1000; ++i)
                            {
                                evaluate(engine, formula);
                            }
                        }));
    }
    return most;
}

/// The greatest number of allocations when a formula is compiled again on an object that has compiled all of them.
std::size_t allocationsPerCompile()
{
    MathexprEngine engine;
    std::vector<MathexprEngine::Text> texts;
    for (const Formula& formula : formulas())
    {
        texts.push_back(MathexprEngine::textOf(formula));
        engine.compile(texts.back());
    }
    std::size_t most = 0;
    for (const MathexprEngine::Text& text : texts)
    {
        most = std::max(most, allocationsOf([&] { engine.compile(text); }));
    }
    return most;
}

/// Heap memory of an object with its whole vocabulary, including its own size.
template <class Object, class... Args>
std::size_t bytesOf(Args... args)
{
    const std::size_t before = liveBytes;
    const auto object = std::make_unique<Object>(args...);
    return liveBytes - before;
}

/// Heap memory added by compiling a text on an object that has compiled none.
std::size_t bytesOfProgram(const Formula& formula)
{
    MathexprEngine engine;
    const MathexprEngine::Text text = MathexprEngine::textOf(formula);
    const std::size_t before = liveBytes;
    engine.compile(text);
    return liveBytes - before;
}

}

int main()
{
    // This must come first: the first object of a process also allocates the data that all objects share.
    const std::size_t beforeFirst = liveBytes;
    MathexprEngine::construct();
    const std::size_t sharedBytes = liveBytes - beforeFirst;

    const auto program = std::find_if(formulas().begin(), formulas().end(),
                                      [](const Formula& formula) { return formula.text == "((x*2+y)*3-z)/(a+b*2)"; });
    std::printf("{\n  \"allocations per 1000 evaluations\": %zu,\n  \"allocations per compile\": %zu,\n",
                allocationsPerThousandEvaluations(), allocationsPerCompile());
    std::printf(
        "  \"bytes of an object\": {\"mathexpr\": %zu, \"muparser\": %zu, \"muparserx\": %zu, \"fparser\": %zu},\n",
        bytesOf<MathExpression>(true, nullptr), bytesOf<mu::Parser>(),
        bytesOf<mup::ParserX>(static_cast<unsigned>(mup::pckALL_NON_COMPLEX)), bytesOf<FunctionParser>());
    std::printf("  \"bytes shared by all objects\": %zu,\n  \"bytes of the program\": %zu\n}\n", sharedBytes,
                bytesOfProgram(*program));
    return 0;
}
