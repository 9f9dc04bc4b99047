// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MutantChoice.cpp - reads the choice when the process starts, before any constructor of the library runs. It is a
// separate shared library, so that all modules of the process make the same choice.
#include "MutantChoice.h"

#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

int mathexprChosenMutant = -1;
unsigned char* mathexprReachedMutants = nullptr;

namespace {

[[gnu::constructor]] void readChoice()
{
    if (const char* const number = std::getenv("MATHEXPR_MUTANT"))
    {
        mathexprChosenMutant = std::atoi(number);
    }
    if (const char* const name = std::getenv("MATHEXPR_MUTANTS_REACHED"))
    {
        const int file = open(name, O_RDWR | O_CLOEXEC);
        struct stat size = {};
        if (file < 0 || fstat(file, &size) != 0)
        {
            std::abort();
        }
        void* const bytes =
            mmap(nullptr, static_cast<std::size_t>(size.st_size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        close(file);
        if (bytes == MAP_FAILED)
        {
            std::abort();
        }
        mathexprReachedMutants = static_cast<unsigned char*>(bytes);
    }
}

}  // namespace
