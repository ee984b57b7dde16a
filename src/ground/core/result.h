#pragma once

#include <string>
#include <system_error>
#include <utility>
#include <variant>

namespace kestrova
{

/// Kinds of failure that callers tell apart.
enum class ErrorCode {
    CannotOpen,
    CannotRead,
    CannotWrite,
    CannotDelete,
    Damaged,
    Refused, ///< a name that reaches outside its folder, a value that no field can hold
    Missing,
    NoSpace,
    Stopped, ///< by the person
    Differs, ///< a copy that does not equal its source
};

/// What went wrong, with what, and the system's own words for it. Data: it speaks to nobody.
struct Failure {
    ErrorCode code = ErrorCode::CannotRead;
    std::string subject; ///< the file, folder or name
    std::string reason;  ///< the system's reason; may be empty
};

Failure MakeFailure(ErrorCode code, std::string subject, const std::error_code& reason = {});

/// A value or a `Failure`.
template <class T> class [[nodiscard]] Result
{
public:
    Result(T value) : content_(std::move(value)) {}
    Result(Failure error) : content_(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    T& Value() & { return std::get<T>(content_); }
    const T& Value() const& { return std::get<T>(content_); }
    T&& Value() && { return std::get<T>(std::move(content_)); }
    const Failure& Error() const { return std::get<Failure>(content_); }
    T& operator*() & { return Value(); }
    const T& operator*() const& { return Value(); }
    /// For what is only shown, or where nothing is decided on a failure.
    T ValueOr(T other) && { return *this ? std::get<T>(std::move(content_)) : std::move(other); }
    T* operator->() { return &Value(); }
    const T* operator->() const { return &Value(); }

private:
    std::variant<T, Failure> content_;
};

/// Done, or a `Failure`.
class [[nodiscard]] Status
{
public:
    Status() = default;
    Status(Failure error) : error_(std::move(error)), failed_(true) {}

    explicit operator bool() const { return !failed_; }
    const Failure& Error() const { return error_; }

private:
    Failure error_;
    bool failed_ = false;
};

} // namespace kestrova
