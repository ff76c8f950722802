#pragma once

#include <string>
#include <utility>
#include <variant>

namespace tonquay::base {

/// Why a request to the world failed. The host explains, the caller decides.
struct Failure {
    enum class Kind {
        notFound,    ///< no such file, folder, drive, disc or program
        refused,     ///< permission, read-only, held by somebody else
        unreadable,  ///< a device or medium that gives no data
        full,        ///< no space left
        invalid,     ///< what is there makes no sense: a broken sheet, a bad argument
        unavailable, ///< this system cannot do it
        other,
    };

    Kind kind = Kind::other;
    std::string where; ///< the path, device or command it happened at, as a user would write it
    std::string text;  ///< what happened, one sentence without a final stop
};

/// A failure as one line: "where: text".
std::string describe(const Failure& failure);

/// A value or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : held_(std::move(value)) {}
    Result(Failure failure) : held_(std::move(failure)) {}

    explicit operator bool() const { return held_.index() == 0; }
    T& operator*() { return *std::get_if<0>(&held_); }
    const T& operator*() const { return *std::get_if<0>(&held_); }
    T* operator->() { return std::get_if<0>(&held_); }
    const T* operator->() const { return std::get_if<0>(&held_); }
    const Failure& failure() const { return *std::get_if<1>(&held_); }

private:
    std::variant<T, Failure> held_;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Failure failure) : failure_(std::move(failure)), good_(false) {}

    explicit operator bool() const { return good_; }
    const Failure& failure() const { return failure_; }

private:
    Failure failure_;
    bool good_ = true;
};

using Status = Result<void>;

}
