#pragma once

#include "controls/property.h"

#include <utility>
#include <vector>

namespace tonquay::ui {

/// What a view follows, for as long as it lives.
class Bindings {
public:
    void keep(controls::Following following) { followings_.push_back(std::move(following)); }

    /// Has `show` told the present value now and each later one.
    template <class T, class Show>
    void show(controls::Property<T>& property, Show show)
    {
        show(property.get());
        keep(property.follow(std::move(show)));
    }

private:
    std::vector<controls::Following> followings_;
};

/// Marks the time in which a view writes its model, so that what it hears of it meanwhile is its own echo.
class Writing {
public:
    explicit Writing(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~Writing() { flag_ = before_; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    bool& flag_;
    bool before_;
};

}
