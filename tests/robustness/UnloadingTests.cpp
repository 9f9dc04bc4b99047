// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnloadingTests.cpp - a host that loads and unloads the library repeatedly. This program is not linked with the
// library. AddressSanitizer reports memory that the unloaded library has not freed as a leak.
#include <mathexpr.h>

#include <cstddef>
#include <string>

#include <dlfcn.h>
#include <malloc.h>

#include <gtest/gtest.h>

namespace {

class LoadedLibrary
{
public:
    LoadedLibrary() : handle(dlopen(MATHEXPR_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary()
    {
        if (handle != nullptr)
        {
            dlclose(handle);
        }
    }

    explicit operator bool() const { return handle != nullptr; }

    template <class Function>
    Function* entry(Function*, const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(handle, name));
    }

private:
    void* handle;
};

#define ENTRY(library, function) library.entry(static_cast<decltype(&function)>(nullptr), #function)

/// Creates everything that the library creates on first use.
void use(const LoadedLibrary& library)
{
    mathexpr_expression* expression = nullptr;
    ASSERT_EQ(ENTRY(library, mathexpr_create_utf8)(nullptr, &expression), MATHEXPR_OK);
    mathexpr_value value{};
    value.x = 3.0;
    EXPECT_EQ(ENTRY(library, mathexpr_set_variable_utf8)(expression, "x", MATHEXPR_ZERO_TERMINATED, &value, nullptr),
              MATHEXPR_OK);
    EXPECT_EQ(ENTRY(library, mathexpr_evaluate_text_utf8)(expression, "2*sqr(x)", MATHEXPR_ZERO_TERMINATED, &value),
              MATHEXPR_OK);
    EXPECT_EQ(value.x, 18.0);
    double number = 0.0;
    mathexpr_results results{};
    results.size = sizeof(results);
    results.data = &number;
    results.stride = sizeof(number);
    EXPECT_EQ(ENTRY(library, mathexpr_evaluate_bulk_utf8)(expression, nullptr, 0, 1, &results, 0, nullptr),
              MATHEXPR_OK);
    EXPECT_EQ(number, 18.0);
    mathexpr_vocabulary_item_utf8 item{};
    item.size = sizeof(item);
    EXPECT_EQ(ENTRY(library, mathexpr_get_vocabulary_item_utf8)(0, &item), MATHEXPR_OK);
    EXPECT_EQ(std::string(item.symbol), "pi");
    EXPECT_EQ(ENTRY(library, mathexpr_destroy)(expression), MATHEXPR_OK);
}

void loadUseAndUnload()
{
    const LoadedLibrary library;
    ASSERT_TRUE(library) << dlerror();
    use(library);
}

TEST(Unloading, LeavesNothingBehind)
{
    for (int i = 0; i < 10; ++i)
    {
        loadUseAndUnload();
    }
    EXPECT_EQ(dlopen(MATHEXPR_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it has not been unloaded";
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 100; ++i)
    {
        loadUseAndUnload();
    }
    // The vocabulary alone takes more than 50,000 bytes.
    EXPECT_LT(mallinfo2().uordblks, before + 50000);
}

}
