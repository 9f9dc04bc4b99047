// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Boundary.h - wraps every function of the C interface, so that no exception leaves it.
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
