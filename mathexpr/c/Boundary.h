// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Boundary.h - what every function of the C interface is wrapped into: nothing is thrown out of it.
#pragma once

#include "mathexpr/c/HostCallbacks.h"

#include <mathexpr.h>

#include <new>

template <class Work>
mathexpr_status atBoundary(Work work) noexcept
{
    try
    {
        return work();
    }
    catch (const HostCallbackFailure& failure)
    {
        return failure.status;
    }
    catch (const std::bad_alloc&)
    {
        return MATHEXPR_OUT_OF_MEMORY;
    }
    catch (...)
    {
        return MATHEXPR_INTERNAL_ERROR;
    }
}
