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
    NotDone, ///< an outside program, or a conversion, did not do its work
};

/// What went wrong, with what, and the system's own words for it. Data: it speaks to nobody.
struct Failure {
    ErrorCode code = ErrorCode::CannotRead;
    std::string subject{};  ///< the file, folder or name
    std::string reason{};   ///< the system's reason, or what to do about it; may be empty
    std::string details{};  ///< a tool's last lines, a list of names: shown folded away
    std::string sentence{}; ///< what was not done, for a person; empty where the caller knows it
};

Failure MakeFailure(ErrorCode code, std::string subject, const std::error_code& reason = {});
/// A failure that says by itself what was not done, a Stop too.
Failure InWords(ErrorCode code, std::string sentence, std::string reason = {},
                std::string details = {});
/// The failure with that sentence, unless it has one of its own. A Stop gets none: who pressed it
/// knows.
Failure Saying(std::string sentence, Failure failure);

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

/// Without its value.
template <class T> Status StatusOf(const Result<T>& result)
{
    return result ? Status{} : Status{result.Error()};
}
/// Said of a failure, as `Saying` does; nothing for what is done.
inline Status Saying(std::string sentence, Status status)
{
    return status ? status : Status{Saying(std::move(sentence), status.Error())};
}

} // namespace kestrova
