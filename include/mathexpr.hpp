// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// mathexpr.hpp - expressions for C++ hosts of any compiler, over the C interface.
//
//     mathexpr::Value width = 2.5;
//     mathexpr::Value value = mathexpr::evaluate("2*width+0.5", {{"width", width}});
//     std::cout << value << '\n';  // 5.5
//
// The header is complete in itself: it needs C++17 and mathexpr.h, and calls only the C interface. The host's compiler and
// standard library may therefore differ from the library's. All text is UTF-8.
//
// Failures. A failed call throws mathexpr::Error. Its what() is the message for the user; start() and length() locate the
// failure in the text. Each throwing call has a twin with the prefix try, which returns a Result instead. Without exceptions
// only these twins are declared. If the header itself runs out of memory, it throws std::bad_alloc.
//
// Callables of the host. Their exceptions propagate unchanged out of the call that invoked them, from try calls as well. While
// a callable runs, its expression can be read, but not changed or run (MATHEXPR_BUSY).
//
// Moved-from objects. A moved-from Expression or Function can only be assigned to or destroyed. Do neither to an object whose
// callable is running.
//
// Threads. Use an Expression or a Function from one thread at a time. Separate objects share no mutable state.
//
// Sections, in this order:
//
//     failures     Error, Result
//     values       Point, Value, Variable
//     arrays       Column, Results, RowsOutcome
//     expressions  Limits, Options, Variables, Expression; evaluate, number, point and evaluateArrays of one text
//     functions    Function
#pragma once

#include <mathexpr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#if defined(__cpp_exceptions) || defined(_CPPUNWIND)
#define MATHEXPR_HAS_EXCEPTIONS 1
#else
#define MATHEXPR_HAS_EXCEPTIONS 0
#endif

namespace mathexpr {

// ----- failures --------------------------------------------------------------

/// Why a call failed.
class Error : public std::runtime_error
{
public:
    /// A correction: replaces a span of the text. The corrected text compiles.
    struct Fix
    {
        std::size_t start = 0;
        std::size_t length = 0;
        std::string replacement{};
    };

    /// All facts about a failure. Positions and lengths count bytes.
    struct Details
    {
        mathexpr_status status = MATHEXPR_OK;
        std::size_t start = 0;
        std::size_t length = 0;
        std::uint32_t code = 0;
        std::uint32_t expected = 0;
        std::string item{};
        std::vector<std::string> suggestions{};
        std::vector<std::string> hints{};
        std::optional<Fix> fix{};
    };

    Error(const std::string& message, Details details)
        : std::runtime_error(message), details_(std::make_shared<const Details>(std::move(details)))
    {}

    /// MATHEXPR_PARSING_ERROR, MATHEXPR_REFUSED and so on; see mathexpr.h. If the text is at fault, what() is in the user's
    /// language.
    mathexpr_status status() const noexcept { return details_->status; }

    /// Position of the failure in the text as given, or in the name.
    std::size_t start() const noexcept { return details_->start; }

    /// Length of the failed span; 0 if the failure has no span.
    std::size_t length() const noexcept { return details_->length; }

    /// MATHEXPR_PARSING_... or MATHEXPR_DEFINITION_..., depending on status().
    std::uint32_t code() const noexcept { return details_->code; }

    /// What would have been accepted: a set of MATHEXPR_EXPECTED_... bits.
    std::uint32_t expected() const noexcept { return details_->expected; }

    /// The token, symbol or text concerned.
    const std::string& item() const noexcept { return details_->item; }

    /// For an unknown name: up to three similar names, the nearest first.
    const std::vector<std::string>& suggestions() const noexcept { return details_->suggestions; }

    /// Sentences in the user's language that help to correct the text; show them below what().
    const std::vector<std::string>& hints() const noexcept { return details_->hints; }

    /// The correction that the last hint describes, if it is unambiguous.
    const std::optional<Fix>& fix() const noexcept { return details_->fix; }

private:
    std::shared_ptr<const Details> details_;  // copying an exception does not throw
};

/// A value, or the error that prevented it.
template <class T>
class [[nodiscard]] Result
{
public:
    Result(T value) : held_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : held_(std::in_place_index<1>, std::move(error)) {}

    bool has_value() const noexcept { return held_.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }

    // Valid only if has_value():
    const T& operator*() const& noexcept { return *std::get_if<0>(&held_); }
    T& operator*() & noexcept { return *std::get_if<0>(&held_); }
    T&& operator*() && noexcept { return std::move(*std::get_if<0>(&held_)); }
    const T* operator->() const noexcept { return std::get_if<0>(&held_); }
    T* operator->() noexcept { return std::get_if<0>(&held_); }

    T value_or(T other) const { return has_value() ? **this : std::move(other); }

    /// Valid only if !has_value().
    const Error& error() const noexcept { return *std::get_if<1>(&held_); }

#if MATHEXPR_HAS_EXCEPTIONS
    /// @throws Error
    const T& value() const&
    {
        check();
        return **this;
    }
    T value() &&
    {
        check();
        return *std::move(*this);
    }
#endif

private:
#if MATHEXPR_HAS_EXCEPTIONS
    void check() const
    {
        if (!has_value())
        {
            throw Error(error());
        }
    }
#endif

    std::variant<T, Error> held_;
};

/// Success, or an error.
template <>
class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Error error) : error_(std::move(error)) {}

    bool has_value() const noexcept { return !error_.has_value(); }
    explicit operator bool() const noexcept { return has_value(); }

    /// Valid only if !has_value().
    const Error& error() const noexcept { return *error_; }

#if MATHEXPR_HAS_EXCEPTIONS
    /// @throws Error
    void value() const
    {
        if (error_)
        {
            throw Error(*error_);
        }
    }
#endif

private:
    std::optional<Error> error_;
};

namespace detail {

inline Error errorOfStatus(mathexpr_status status)
{
    Error::Details details;
    details.status = status;
    return {mathexpr_status_text(status), std::move(details)};
}

inline Error errorOf(mathexpr_status status, const std::string& message)
{
    Error::Details details;
    details.status = status;
    return {message, std::move(details)};
}

/// The error for a text that the library refused as ill-formed.
inline Error errorOfText(mathexpr_status status, std::string_view text)
{
    Error::Details details;
    details.status = status;
    if (status == MATHEXPR_BAD_UTF8 || status == MATHEXPR_ZERO_IN_TEXT)
    {
        mathexpr_check_utf8(text.data(), text.size(), &details.start);
        details.length = 1;
    }
    return {mathexpr_status_text(status), std::move(details)};
}

inline Error errorOfDiagnostic(const mathexpr_diagnostic_utf8& diagnostic)
{
    Error::Details details;
    details.status = diagnostic.kind == MATHEXPR_KIND_PARSING      ? MATHEXPR_PARSING_ERROR
                     : diagnostic.kind == MATHEXPR_KIND_DEFINITION ? MATHEXPR_DEFINITION_ERROR
                                                                   : MATHEXPR_REFUSED;
    details.start = diagnostic.start;
    details.length = diagnostic.length;
    details.code = diagnostic.code;
    details.expected = diagnostic.expected;
    details.item.assign(diagnostic.item, diagnostic.item_length);
    details.suggestions.assign(diagnostic.suggestions, diagnostic.suggestions + diagnostic.suggestion_count);
    details.hints.assign(diagnostic.hints, diagnostic.hints + diagnostic.hint_count);
    if (diagnostic.fix_length != 0 || diagnostic.fix_replacement_length != 0)
    {
        details.fix = Error::Fix{diagnostic.fix_start, diagnostic.fix_length,
                                 std::string(diagnostic.fix_replacement, diagnostic.fix_replacement_length)};
    }
    return {std::string(diagnostic.text, diagnostic.text_length), std::move(details)};
}

inline Result<void> resultOf(mathexpr_status status)
{
    return status == MATHEXPR_OK ? Result<void>() : Result<void>(errorOfStatus(status));
}

}

// ----- values ----------------------------------------------------------------

struct Point
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline bool operator==(const Point& left, const Point& right) noexcept
{
    return left.x == right.x && left.y == right.y && left.z == right.z;
}

inline bool operator!=(const Point& left, const Point& right) noexcept
{
    return !(left == right);
}

/// Number of digits for the shortest text that reads back to the same bits.
inline constexpr std::uint32_t exactDigits = MATHEXPR_EXACT_DIGITS;

/// A number or a point.
class Value
{
public:
    Value(double number = 0.0) noexcept : record_{MATHEXPR_NUMBER, 0, 0, 0, number, 0.0, 0.0} {}
    Value(const Point& point) noexcept : record_{MATHEXPR_POINT, 0, 0, 0, point.x, point.y, point.z} {}
    /// @param record  a number or a point
    explicit Value(const mathexpr_value& record) noexcept : record_(record) {}

    bool isNumber() const noexcept { return record_.type == MATHEXPR_NUMBER; }
    bool isPoint() const noexcept { return !isNumber(); }

    Result<double> tryNumber() const
    {
        return isNumber() ? Result<double>(record_.x)
                          : detail::errorOf(MATHEXPR_OTHER_KIND, "the value is a point, and a number is needed");
    }
    Result<Point> tryPoint() const
    {
        return isPoint() ? Result<Point>(Point{record_.x, record_.y, record_.z})
                         : detail::errorOf(MATHEXPR_OTHER_KIND, "the value is a number, and a point is needed");
    }
#if MATHEXPR_HAS_EXCEPTIONS
    double number() const
    {
        return tryNumber().value();
    }
    Point point() const
    {
        return tryPoint().value();
    }
#endif

    /// The value as expression text, independent of the locale; see mathexpr_format_value_utf8.
    /// @param digits  significant digits, 1 to 17, or exactDigits
    std::string text(std::uint32_t digits = exactDigits) const
    {
        std::array<char, MATHEXPR_VALUE_TEXT_CAPACITY> buffer;
        std::size_t length = 0;
        mathexpr_format_value_utf8(&record_, digits > 17 ? 17 : digits, buffer.data(), buffer.size(), &length);
        return {buffer.data(), length};
    }

    /// The record of the C interface.
    const mathexpr_value& record() const noexcept
    {
        return record_;
    }

private:
    mathexpr_value record_;
};

inline bool operator==(const Value& left, const Value& right) noexcept
{
    const mathexpr_value& one = left.record();
    const mathexpr_value& other = right.record();
    return one.type == other.type && Point{one.x, one.y, one.z} == Point{other.x, other.y, other.z};
}

inline bool operator!=(const Value& left, const Value& right) noexcept
{
    return !(left == right);
}

inline std::ostream& operator<<(std::ostream& stream, const Value& value)
{
    return stream << value.text();
}

/// A name and its value.
struct Variable
{
    std::string_view name;
    Value value;
};

namespace detail {

template <class Element, class Given, class = void>
struct Conversion
{
    static constexpr bool exists = std::is_convertible_v<const Given&, Element>;
    static Element of(const Given& given) { return given; }
};

/// From the pairs of a map.
template <class Given>
struct Conversion<Variable, Given, std::void_t<decltype(std::declval<Given>().first, std::declval<Given>().second)>>
{
    static constexpr bool exists =
        std::is_convertible_v<decltype((std::declval<const Given&>().first)), std::string_view> &&
        std::is_convertible_v<decltype((std::declval<const Given&>().second)), Value>;
    static Variable of(const Given& given) { return {given.first, given.second}; }
};

template <class Range>
using ElementOf = std::remove_cv_t<std::remove_reference_t<decltype(*std::begin(std::declval<const Range&>()))>>;

}

/// A list argument: a braced list, or any range whose elements convert to Element, such as a vector of strings for names or a
/// map from names to numbers for variables. It does not own what its elements refer to; that must outlive the call.
template <class Element>
class List
{
public:
    List() = default;
    List(std::initializer_list<Element> elements) : elements_(elements) {}
    template <class Range, class = std::enable_if_t<detail::Conversion<Element, detail::ElementOf<Range>>::exists>>
    List(const Range& range)
    {
        for (const auto& given : range)
        {
            elements_.push_back(detail::Conversion<Element, detail::ElementOf<Range>>::of(given));
        }
    }

    auto begin() const noexcept { return elements_.begin(); }
    auto end() const noexcept { return elements_.end(); }
    std::size_t size() const noexcept { return elements_.size(); }
    const Element& operator[](std::size_t index) const noexcept { return elements_[index]; }

private:
    std::vector<Element> elements_{};
};

// ----- arrays ----------------------------------------------------------------

namespace detail {

template <class Element>
inline constexpr bool isElement = std::is_same_v<Element, double> || std::is_same_v<Element, Point>;

template <class Container>
using DataOf = decltype(std::declval<Container&>().data());

}

/// One value of a variable for each row, in the host's memory.
class Column
{
public:
    /// @param data    first row's number or point, aligned to 8 bytes
    /// @param count   number of rows
    /// @param stride  bytes from one row to the next, a multiple of 8; 0 repeats the first value
    template <class Element, class = std::enable_if_t<detail::isElement<Element>>>
    Column(std::string_view name, const Element* data, std::size_t count,
           std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(sizeof(Element))) noexcept
        : name_(name), count_(count), isPoint_(std::is_same_v<Element, Point>), data_(data), stride_(stride)
    {}

    /// @param container  of doubles or Points, with data() and size()
    template <class Container, class = std::enable_if_t<detail::isElement<
                                   std::remove_cv_t<std::remove_pointer_t<detail::DataOf<const Container>>>>>>
    Column(std::string_view name, const Container& container) noexcept
        : Column(name, container.data(), container.size())
    {}

    std::string_view name() const noexcept { return name_; }
    std::size_t count() const noexcept { return count_; }
    bool isPoint() const noexcept { return isPoint_; }

    mathexpr_column_utf8 record() const noexcept
    {
        const std::uint32_t kind = isPoint_ ? MATHEXPR_POINTS : MATHEXPR_NUMBERS;
        return {sizeof(mathexpr_column_utf8),
                kind,
                name_.data(),
                name_.size(),
                static_cast<const double*>(data_),
                stride_,
                static_cast<std::ptrdiff_t>(sizeof(double))};
    }

private:
    std::string_view name_;
    std::size_t count_;
    bool isPoint_;
    const void* data_;
    std::ptrdiff_t stride_;
};

/// Receives one value for each row, in the host's memory. A refused row receives NaN.
class Results
{
public:
    /// @param stride  bytes from one row to the next, a multiple of 8; rows must not overlap
    template <class Element, class = std::enable_if_t<detail::isElement<Element>>>
    Results(Element* data, std::size_t count,
            std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(sizeof(Element))) noexcept
        : count_(count), isPoint_(std::is_same_v<Element, Point>), data_(data), stride_(stride)
    {}

    /// @param container  of doubles or Points, with data() and size(); must outlive this object
    template <class Container,
              class = std::enable_if_t<detail::isElement<std::remove_pointer_t<detail::DataOf<Container>>>>>
    Results(Container&& container) noexcept : Results(container.data(), container.size())
    {}

    /// Also requests the status of each row: MATHEXPR_ROW_..., or a message number.
    /// @param status  one element for each row
    Results& withRowStatus(std::uint32_t* status) noexcept
    {
        rowStatus_ = status;
        return *this;
    }

    std::size_t count() const noexcept { return count_; }

    mathexpr_results record() const noexcept
    {
        const std::uint32_t kind = isPoint_ ? MATHEXPR_POINTS : MATHEXPR_NUMBERS;
        return {
            sizeof(mathexpr_results), kind, data_, stride_, static_cast<std::ptrdiff_t>(sizeof(double)), rowStatus_};
    }

private:
    std::size_t count_;
    bool isPoint_;
    void* data_;
    std::ptrdiff_t stride_;
    std::uint32_t* rowStatus_ = nullptr;
};

/// Outcome of an evaluation over arrays. All rows were evaluated; some may have been refused.
struct RowsOutcome
{
    std::size_t failedCount = 0;
    std::size_t firstFailed = 0;    ///< Index of the first failed row.
    std::uint32_t firstStatus = 0;  ///< Its MATHEXPR_ROW_..., or its message number.
};

// ----- expressions -----------------------------------------------------------

/// Called while a text is compiled, for a name that is neither a constant nor a variable. A value that it returns becomes a
/// variable of that name.
using Resolver = std::function<std::optional<Value>(std::string_view name)>;

/// Shows a message to the user. The number is 1 to 19; the text is in the user's language.
using MessageDisplay = std::function<void(std::uint32_t id, std::string_view text)>;

/// Upper bounds on an accepted text; 0 is no limit.
struct Limits
{
    std::uint32_t maxTextLength = 0;  ///< Characters as typed.
    std::uint32_t maxRecords = 0;     ///< Values, operators and function calls, counted at each use.
    std::uint32_t maxNesting = 0;     ///< Nesting depth of brackets and prefix operators.
};

/// Options of an expression, fixed when it is created.
struct Options
{
    Resolver resolver{};
    std::vector<std::string> names{};  ///< Names that the resolver knows, for suggestions.
    MessageDisplay showMessage{};      ///< If empty, no message is shown.
    Limits limits{};
};

class Expression;
class Editor;  // of mathexpr_editor.hpp

namespace detail {

/// A handle and the host's callables, at a fixed address.
class Session
{
public:
    explicit Session(Options options) : options_(std::move(options)) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { mathexpr_destroy(handle_); }

    /// @return MATHEXPR_OK or MATHEXPR_OUT_OF_MEMORY
    mathexpr_status open()
    {
        mathexpr_options_utf8 given{};
        given.size = sizeof(given);
        given.context = this;
        given.lookup = options_.resolver ? lookUp : nullptr;
        given.get_name = options_.names.empty() ? nullptr : getName;
        if (options_.showMessage)
        {
            given.flags = MATHEXPR_SHOW_MESSAGES;
        }
        given.show_message = showMessage;
        const mathexpr_status status = mathexpr_create_utf8(&given, &handle_);
        return status == MATHEXPR_OK ? setLimits(options_.limits) : status;
    }

    mathexpr_status setLimits(const Limits& limits)
    {
        const mathexpr_limits record{sizeof(record), limits.maxTextLength, limits.maxRecords, limits.maxNesting};
        const mathexpr_status status = mathexpr_set_limits(handle_, &record);
        if (status == MATHEXPR_OK)
        {
            options_.limits = limits;
        }
        return status;
    }

    /// Rethrows what a callable of the host threw during the last call.
    void rethrow()
    {
#if MATHEXPR_HAS_EXCEPTIONS
        if (thrown_)
        {
            std::rethrow_exception(std::exchange(thrown_, nullptr));
        }
#endif
    }

    /// The error for a failed compilation or evaluation.
    Error errorOf(mathexpr_status status)
    {
        const bool hasDiagnostic =
            status == MATHEXPR_PARSING_ERROR || status == MATHEXPR_DEFINITION_ERROR || status == MATHEXPR_REFUSED;
        mathexpr_diagnostic_utf8 diagnostic{};
        diagnostic.size = sizeof(diagnostic);
        if (!hasDiagnostic || mathexpr_get_diagnostic_utf8(handle_, &diagnostic) != MATHEXPR_OK)
        {
            return errorOfStatus(status);
        }
        return errorOfDiagnostic(diagnostic);
    }

    std::vector<std::string> names(std::uint32_t which) const
    {
        mathexpr_names_utf8 found{};
        found.size = sizeof(found);
        const mathexpr_status status = mathexpr_get_names_utf8(handle_, which, &found);
        return status == MATHEXPR_OK ? std::vector<std::string>(found.names, found.names + found.name_count)
                                     : std::vector<std::string>();
    }

    std::optional<Value> get(std::string_view name) const
    {
        mathexpr_value value{};
        const mathexpr_status status = mathexpr_get_variable_utf8(handle_, name.data(), name.size(), &value);
        return status == MATHEXPR_OK ? std::optional<Value>(Value(value)) : std::nullopt;
    }

    Result<void> set(std::string_view name, const Value& value)
    {
        mathexpr_name_refusal refusal{};
        refusal.size = sizeof(refusal);
        const mathexpr_status status =
            mathexpr_set_variable_utf8(handle_, name.data(), name.size(), &value.record(), &refusal);
        if (status == MATHEXPR_DEFINITION_ERROR)
        {
            Error::Details details;
            details.status = status;
            details.start = refusal.start;
            details.length = refusal.length;
            details.code = refusal.code;
            details.item = name;
            return Error(mathexpr_status_text(status), std::move(details));
        }
        return status == MATHEXPR_OK ? Result<void>() : Result<void>(errorOfText(status, name));
    }

    Result<void> setAll(const List<Variable>& variables)
    {
        for (const Variable& variable : variables)
        {
            Result<void> result = set(variable.name, variable.value);
            if (!result)
            {
                return result;
            }
        }
        return {};
    }

    Result<void> compile(std::string_view typed)
    {
        const mathexpr_status status = mathexpr_set_expression_utf8(handle_, typed.data(), typed.size());
        const bool isUnchanged = status != MATHEXPR_OK && status <= MATHEXPR_BULK_REFUSED;
        if (!isUnchanged)
        {
            text = typed;
            isCompiled = status == MATHEXPR_OK;
        }
        rethrow();
        if (status == MATHEXPR_OK)
        {
            return {};
        }
        return isUnchanged ? errorOfText(status, typed) : errorOf(status);
    }

    Result<Value> evaluate()
    {
        mathexpr_value value{};
        const mathexpr_status status = mathexpr_evaluate(handle_, &value);
        if (status != MATHEXPR_OK)
        {
            mathexpr_drop_assignment(handle_);
        }
        rethrow();
        return status == MATHEXPR_OK ? Result<Value>(Value(value)) : Result<Value>(errorOf(status));
    }

    Result<RowsOutcome> evaluateArrays(const List<Column>& columns, const Results& results, std::uint32_t threadCount)
    {
        std::vector<mathexpr_column_utf8> records;
        for (const Column& column : columns)
        {
            if (column.count() != results.count())
            {
                return detail::errorOf(MATHEXPR_BULK_REFUSED,
                                       "different lengths: the column '" + std::string(column.name()) + "' has " +
                                           std::to_string(column.count()) + " rows, the results have " +
                                           std::to_string(results.count()) + " rows");
            }
            records.push_back(column.record());
        }
        const mathexpr_results record = results.record();
        mathexpr_bulk_outcome outcome{};
        outcome.size = sizeof(outcome);
        const mathexpr_status status = mathexpr_evaluate_bulk_utf8(handle_, records.data(), records.size(),
                                                                   results.count(), &record, threadCount, &outcome);
        rethrow();
        if (status == MATHEXPR_BULK_REFUSED)
        {
            return errorOfArrays(columns, outcome);
        }
        return status == MATHEXPR_OK
                   ? Result<RowsOutcome>(RowsOutcome{outcome.failed_count, outcome.first_failed, outcome.first_status})
                   : Result<RowsOutcome>(errorOfStatus(status));
    }

    const Options& options() const noexcept
    {
        return options_;
    }
    mathexpr_expression* handle() const noexcept
    {
        return handle_;
    }

    /// Holds back an exception of the host's callable, which must not enter the library.
    template <class Work>
    static void guarded([[maybe_unused]] Session& session, Work work)
    {
#if MATHEXPR_HAS_EXCEPTIONS
        try
        {
            work();
        }
        catch (...)
        {
            session.thrown_ = std::current_exception();
        }
#else
        work();
#endif
    }

    std::string text{};       // the last text given to compile, valid or not
    bool isCompiled = false;  // whether that text is valid

private:
    static Error errorOfArrays(const List<Column>& columns, const mathexpr_bulk_outcome& outcome)
    {
        const auto whose = [&] { return "the column '" + std::string(columns[outcome.column].name()) + "' "; };
        const auto error = [](const std::string& message) { return detail::errorOf(MATHEXPR_BULK_REFUSED, message); };
        switch (outcome.error)
        {
        case MATHEXPR_BULK_COLUMN_NAME:
            return error(whose() + "has no name, or one that is not well-formed UTF-8");
        case MATHEXPR_BULK_COLUMN_TWICE:
            return error(whose() + "occurs twice");
        case MATHEXPR_BULK_COLUMN_DATA:
            return error(whose() + "has no data");
        case MATHEXPR_BULK_COLUMN_ALIGNMENT:
            return error(whose() + "is not aligned to 8 bytes, or its stride is not a multiple of 8");
        case MATHEXPR_BULK_RESULTS_DATA:
            return error("the results have no data");
        case MATHEXPR_BULK_RESULTS_ALIGNMENT:
            return error("the results are not aligned to 8 bytes, or their stride is not a multiple of 8");
        case MATHEXPR_BULK_RESULTS_OVERLAP:
            return error("rows of the results share memory");
        default:
            return detail::errorOfStatus(MATHEXPR_BULK_REFUSED);
        }
    }

    static Session& of(void* context) noexcept
    {
        return *static_cast<Session*>(context);
    }

    static std::int32_t lookUp(void* context, const char* name, std::size_t length, mathexpr_value* value)
    {
        Session& session = of(context);
        std::int32_t answer = MATHEXPR_LOOKUP_REFUSED;
        guarded(session, [&] {
            const std::optional<Value> found = session.options_.resolver(std::string_view(name, length));
            if (found)
            {
                *value = found->record();
            }
            answer = found ? MATHEXPR_LOOKUP_FOUND : MATHEXPR_LOOKUP_NOT_KNOWN;
        });
        return answer;
    }

    static void showMessage(void* context, std::uint32_t id, const char* text, std::size_t length)
    {
        Session& session = of(context);
        if (session.options_.showMessage)
        {
            guarded(session, [&] { session.options_.showMessage(id, std::string_view(text, length)); });
        }
    }

    static const char* getName(void* context, std::uint32_t index)
    {
        const std::vector<std::string>& names = of(context).options_.names;
        return index < names.size() ? names[index].c_str() : nullptr;
    }

    Options options_;
    mathexpr_expression* handle_ = nullptr;
#if MATHEXPR_HAS_EXCEPTIONS
    std::exception_ptr thrown_{};
#endif
};

}

/// A view of an expression's variables; the expression must outlive it. Names ignore the case of A to Z.
class Variables
{
public:
    /// Iterates over the names as they were at begin().
    class Iterator
    {
    public:
        explicit Iterator(const Variables& variables)
            : variables_(&variables), names_(std::make_shared<const std::vector<std::string>>(variables.names()))
        {}

        Variable operator*() const
        {
            const std::string& name = (*names_)[index_];
            return {name, variables_->get(name).value_or(Value())};
        }
        Iterator& operator++() noexcept
        {
            ++index_;
            return *this;
        }
        bool operator!=(std::nullptr_t) const noexcept { return index_ != names_->size(); }

    private:
        const Variables* variables_;
        std::shared_ptr<const std::vector<std::string>> names_;
        std::size_t index_ = 0;
    };

    /// Sets a variable. The next evaluation uses the new value. A new variable can be used by texts compiled afterwards.
    Result<void> trySet(std::string_view name, const Value& value) { return session_->set(name, value); }
#if MATHEXPR_HAS_EXCEPTIONS
    void set(std::string_view name, const Value& value)
    {
        trySet(name, value).value();
    }
#endif

    std::optional<Value> get(std::string_view name) const
    {
        return session_->get(name);
    }

    /// Removes a variable. A text that uses it must be compiled again.
    /// @return whether the variable existed
    bool remove(std::string_view name)
    {
        return mathexpr_remove_variable_utf8(session_->handle(), name.data(), name.size()) == MATHEXPR_OK;
    }

    /// Names of all variables, in the order of definition.
    std::vector<std::string> names() const
    {
        return session_->names(MATHEXPR_NAMES_DEFINED);
    }

    Iterator begin() const
    {
        return Iterator(*this);
    }
    std::nullptr_t end() const noexcept
    {
        return nullptr;
    }

private:
    friend class Expression;
    explicit Variables(detail::Session& session) noexcept : session_(&session) {}

    detail::Session* session_;
};

/// A text with its variables. Compile it once, evaluate it any number of times.
class Expression
{
public:
    /// Creates an expression and compiles its text.
    /// @param variables  set before the text is compiled
    static Result<Expression> tryCreate(std::string_view text, const List<Variable>& variables = {},
                                        Options options = {})
    {
        Result<Expression> made = tryCreateEmpty(std::move(options));
        Result<void> result = made ? made->session_->setAll(variables) : Result<void>();
        if (made && result)
        {
            result = made->tryCompile(text);
        }
        return made && !result ? Result<Expression>(result.error()) : std::move(made);
    }
    /// Creates an expression without a text.
    static Result<Expression> tryCreate(Options options = {}) { return tryCreateEmpty(std::move(options)); }
#if MATHEXPR_HAS_EXCEPTIONS
    explicit Expression(std::string_view text, const List<Variable>& variables = {}, Options options = {})
        : Expression(tryCreate(text, variables, std::move(options)).value())
    {}
    explicit Expression(Options options = {}) : Expression(tryCreateEmpty(std::move(options)).value()) {}
#endif
    Expression(Expression&&) noexcept = default;
    Expression& operator=(Expression&&) noexcept = default;

    /// Creates an independent expression with the same text, variables and options.
    Result<Expression> tryClone() const
    {
        Result<Expression> made = tryCreateEmpty(session_->options());
        Result<void> result;
        for (const std::string& name : session_->names(MATHEXPR_NAMES_DEFINED))
        {
            if (made && result)
            {
                result = made->session_->set(name, session_->get(name).value_or(Value()));
            }
        }
        if (made && result && session_->isCompiled)
        {
            result = made->tryCompile(session_->text);
        }
        return made && !result ? Result<Expression>(result.error()) : std::move(made);
    }

    /// Compiles another text. After a failure there is nothing to evaluate. The variables are kept in any case.
    Result<void> tryCompile(std::string_view text)
    {
        return session_->compile(text);
    }

    /// Evaluates the compiled text. An assignment such as "a=2" takes effect at the first successful evaluation. After a
    /// failed evaluation it is dropped.
    Result<Value> tryEvaluate()
    {
        return session_->evaluate();
    }
    /// Compiles and evaluates another text.
    Result<Value> tryEvaluate(std::string_view text)
    {
        const Result<void> compiled = tryCompile(text);
        return compiled ? tryEvaluate() : Result<Value>(compiled.error());
    }

    Result<double> tryNumber()
    {
        const Result<Value> value = tryEvaluate();
        return value ? value->tryNumber() : Result<double>(value.error());
    }
    Result<Point> tryPoint()
    {
        const Result<Value> value = tryEvaluate();
        return value ? value->tryPoint() : Result<Point>(value.error());
    }

    /// Evaluates the compiled text for each row of arrays, without copying them. Each row yields the value of the first
    /// evaluation after compiling. A refused row does not affect the others.
    /// @param columns      values of variables that existed when the text was compiled
    /// @param results      one for each row of the columns; not written if the call fails
    /// @param threadCount  number of threads; it does not change the results
    Result<RowsOutcome> tryEvaluateArrays(const List<Column>& columns, const Results& results,
                                          std::uint32_t threadCount = 1)
    {
        return session_->evaluateArrays(columns, results, threadCount);
    }

#if MATHEXPR_HAS_EXCEPTIONS
    Expression clone() const
    {
        return tryClone().value();
    }
    void compile(std::string_view text)
    {
        tryCompile(text).value();
    }
    Value evaluate()
    {
        return tryEvaluate().value();
    }
    Value evaluate(std::string_view text)
    {
        return tryEvaluate(text).value();
    }
    double number()
    {
        return tryNumber().value();
    }
    Point point()
    {
        return tryPoint().value();
    }
    RowsOutcome evaluateArrays(const List<Column>& columns, const Results& results, std::uint32_t threadCount = 1)
    {
        return tryEvaluateArrays(columns, results, threadCount).value();
    }
    void setLimits(const Limits& limits)
    {
        trySetLimits(limits).value();
    }
#endif

    Variables variables() noexcept
    {
        return Variables(*session_);
    }

    /// Names of the variables that the compiled text uses, in the order of first use.
    std::vector<std::string> usedNames() const
    {
        return session_->names(MATHEXPR_NAMES_USED);
    }

    /// Names of the variables that the resolver supplied.
    std::vector<std::string> hostNames() const
    {
        return session_->names(MATHEXPR_NAMES_OF_HOST);
    }

    /// The last text given to compile, valid or not.
    const std::string& text() const noexcept
    {
        return session_->text;
    }

    Limits limits() const noexcept
    {
        return session_->options().limits;
    }
    /// Applies to texts compiled afterwards.
    Result<void> trySetLimits(const Limits& limits)
    {
        return detail::resultOf(session_->setLimits(limits));
    }

private:
    friend class Editor;
    friend class Function;

    explicit Expression(std::unique_ptr<detail::Session> session) noexcept : session_(std::move(session)) {}

    static Result<Expression> tryCreateEmpty(Options options)
    {
        auto session = std::make_unique<detail::Session>(std::move(options));
        const mathexpr_status status = session->open();
        return status == MATHEXPR_OK ? Result<Expression>(Expression(std::move(session)))
                                     : Result<Expression>(detail::errorOfStatus(status));
    }

    std::unique_ptr<detail::Session> session_;
};

/// Compiles and evaluates a text once.
inline Result<Value> tryEvaluate(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    Result<Expression> expression = Expression::tryCreate(text, variables, std::move(options));
    return expression ? expression->tryEvaluate() : Result<Value>(expression.error());
}

/// Compiles and evaluates a text whose value is a number.
inline Result<double> tryNumber(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    const Result<Value> value = tryEvaluate(text, variables, std::move(options));
    return value ? value->tryNumber() : Result<double>(value.error());
}

/// Compiles and evaluates a text whose value is a point.
inline Result<Point> tryPoint(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    const Result<Value> value = tryEvaluate(text, variables, std::move(options));
    return value ? value->tryPoint() : Result<Point>(value.error());
}

/// Compiles a text and evaluates it for each row of arrays; see Expression::tryEvaluateArrays.
inline Result<RowsOutcome> tryEvaluateArrays(std::string_view text, const List<Column>& columns, const Results& results,
                                             std::uint32_t threadCount = 1)
{
    Result<Expression> expression = Expression::tryCreate();
    Result<void> result;
    for (const Column& column : columns)
    {
        if (expression && result)
        {
            result = expression->variables().trySet(column.name(), column.isPoint() ? Value(Point()) : Value());
        }
    }
    if (expression && result)
    {
        result = expression->tryCompile(text);
    }
    if (!expression || !result)
    {
        return expression ? result.error() : expression.error();
    }
    return expression->tryEvaluateArrays(columns, results, threadCount);
}

#if MATHEXPR_HAS_EXCEPTIONS
inline Value evaluate(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    return tryEvaluate(text, variables, std::move(options)).value();
}
inline double number(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    return tryNumber(text, variables, std::move(options)).value();
}
inline Point point(std::string_view text, const List<Variable>& variables = {}, Options options = {})
{
    return tryPoint(text, variables, std::move(options)).value();
}
inline RowsOutcome evaluateArrays(std::string_view text, const List<Column>& columns, const Results& results,
                                  std::uint32_t threadCount = 1)
{
    return tryEvaluateArrays(text, columns, results, threadCount).value();
}
#endif

// ----- functions -------------------------------------------------------------

/// A text as a callable with numbers as positional arguments. It is the fastest way to compute a single number.
///
///     mathexpr::Function area("pi/4*d^2", {"d"});
///     const double a = area(2.0);
///
/// Calls are independent: each returns what a new expression would. A successful call allocates nothing. If the value of the
/// text is a point, creating the function fails with the status MATHEXPR_OTHER_KIND.
class Function
{
public:
    /// @param arguments  names of the arguments, by position; the text need not use all of them
    /// @param variables  other names that the text may use, with fixed values
    static Result<Function> tryCreate(std::string_view text, const List<std::string_view>& arguments,
                                      const List<Variable>& variables = {}, Options options = {})
    {
        Result<Expression> expression = Expression::tryCreate(std::move(options));
        Result<void> result = expression ? expression->session_->setAll(variables) : Result<void>();
        auto source = std::make_shared<Source>();
        source->text = text;
        for (const std::string_view argument : arguments)
        {
            source->arguments.emplace_back(argument);
            if (expression && result)
            {
                result = expression->variables().trySet(argument, 0.0);
            }
        }
        return expression && result ? create(*expression, std::move(source))
                                    : Result<Function>(expression ? result.error() : expression.error());
    }
#if MATHEXPR_HAS_EXCEPTIONS
    Function(std::string_view text, const List<std::string_view>& arguments, const List<Variable>& variables = {},
             Options options = {})
        : Function(tryCreate(text, arguments, variables, std::move(options)).value())
    {}
#endif
    Function(Function&&) noexcept = default;
    Function& operator=(Function&&) noexcept = default;

    /// Copies the function, for example for another thread.
    Result<Function> tryClone() const
    {
        mathexpr_function* copy = nullptr;
        const mathexpr_status status = mathexpr_copy_function(handle_.get(), &copy);
        return status == MATHEXPR_OK ? Result<Function>(Function(copy, source_))
                                     : Result<Function>(detail::errorOfStatus(status));
    }

    template <class... Numbers>
    Result<double> tryCall(Numbers... numbers)
    {
        const std::array<double, sizeof...(Numbers)> arguments{{static_cast<double>(numbers)...}};
        return tryCallWith(arguments.data(), arguments.size());
    }
    /// @param count  number of arguments
    Result<double> tryCallWith(const double* arguments, std::size_t count)
    {
        if (count != argumentCount())
        {
            return detail::errorOf(MATHEXPR_BAD_OPTION, "the function takes " + std::to_string(argumentCount()) +
                                                            (argumentCount() == 1 ? " argument" : " arguments") +
                                                            ", not " + std::to_string(count));
        }
        double result = 0.0;
        const mathexpr_status status = mathexpr_call_function(handle_.get(), arguments, &result);
        return status == MATHEXPR_OK ? Result<double>(result) : Result<double>(explain(status, arguments));
    }

#if MATHEXPR_HAS_EXCEPTIONS
    Function clone() const
    {
        return tryClone().value();
    }

    template <class... Numbers>
    double operator()(Numbers... numbers)
    {
        return tryCall(numbers...).value();
    }
    double callWith(const double* arguments, std::size_t count)
    {
        return tryCallWith(arguments, count).value();
    }
#endif

    std::size_t argumentCount() const noexcept
    {
        return source_->arguments.size();
    }
    const std::string& text() const noexcept
    {
        return source_->text;
    }

private:
    /// What is needed to explain a failed call; shared by copies.
    struct Source
    {
        std::string text;
        std::vector<std::string> arguments;
        std::vector<std::pair<std::string, Value>> variables;  // used by the text besides the arguments
    };

    struct Destroy
    {
        void operator()(mathexpr_function* function) const noexcept { mathexpr_destroy_function(function); }
    };

    Function(mathexpr_function* handle, std::shared_ptr<const Source> source) noexcept
        : handle_(handle), source_(std::move(source))
    {}

    static Result<Function> create(Expression& expression, const std::shared_ptr<Source>& source)
    {
        std::vector<const char*> names;
        for (const std::string& argument : source->arguments)
        {
            names.push_back(argument.c_str());
        }
        mathexpr_function* handle = nullptr;
        const mathexpr_status status =
            mathexpr_create_function_utf8(expression.session_->handle(), source->text.data(), source->text.size(),
                                          names.data(), names.size(), &handle);
        expression.session_->rethrow();
        if (status == MATHEXPR_BAD_OPTION)
        {
            return detail::errorOf(status, "two arguments have the same name");
        }
        if (status == MATHEXPR_OTHER_KIND)
        {
            return detail::errorOf(status, "the value is a point, and a number is needed");
        }
        if (status != MATHEXPR_OK && status <= MATHEXPR_BULK_REFUSED)
        {
            return detail::errorOfText(status, source->text);
        }
        if (status != MATHEXPR_OK)
        {
            return expression.session_->errorOf(status);
        }
        Function made(handle, source);
        for (std::string& name : expression.usedNames())
        {
            const Value value = expression.variables().get(name).value_or(Value());
            source->variables.emplace_back(std::move(name), value);
        }
        return made;
    }

    /// Repeats the failed call in an expression, to get its diagnostic.
    Error explain(mathexpr_status status, const double* arguments) const
    {
        Result<Expression> expression = Expression::tryCreate();
        if (!expression)
        {
            return expression.error();
        }
        Variables variables = expression->variables();
        for (const auto& [name, value] : source_->variables)
        {
            (void)variables.trySet(name, value);
        }
        for (std::size_t index = 0; index < argumentCount(); ++index)
        {
            (void)variables.trySet(source_->arguments[index], arguments[index]);
        }
        const Result<void> compiled = expression->tryCompile(source_->text);
        const Result<double> number = compiled ? expression->tryNumber() : Result<double>(compiled.error());
        return number ? detail::errorOfStatus(status) : number.error();
    }

    std::unique_ptr<mathexpr_function, Destroy> handle_;
    std::shared_ptr<const Source> source_;
};

}
