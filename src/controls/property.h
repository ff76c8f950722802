#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace tonquay::controls {

/// Ends the following when it goes out of scope. A view keeps one for each property that it shows.
class [[nodiscard]] Following {
public:
    Following() = default;
    explicit Following(std::shared_ptr<void> slot) : slot_(std::move(slot)) {}

private:
    std::shared_ptr<void> slot_;
};

/// Those who are told. Followers may come and go while others are being told.
template <class... Told>
class Followers {
public:
    using Follower = std::function<void(Told...)>;

    Following add(Follower follower)
    {
        auto slot = std::make_shared<Follower>(std::move(follower));
        followers_.push_back(slot);
        return Following(std::move(slot));
    }

    void tell(Told... told)
    {
        ++telling_;
        for (auto& entry : followers_)
            if (const auto follower = entry.lock())
                (*follower)(told...);
        if (--telling_ == 0)
            followers_.remove_if([](const auto& entry) { return entry.expired(); });
    }

private:
    std::list<std::weak_ptr<Follower>> followers_;
    int telling_ = 0;
};

/// A value that views follow. Setting an equal value tells nobody. Followers are for views only: what the program does
/// on an event stands in the control's handlers.
template <class T>
class Property {
public:
    Property() = default;
    Property(T value) : value_(std::move(value)) {}

    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    const T& get() const { return value_; }
    operator const T&() const { return value_; }

    void set(T value)
    {
        if (value == value_)
            return;
        value_ = std::move(value);
        followers_.tell(value_);
    }

    Property& operator=(T value)
    {
        set(std::move(value));
        return *this;
    }

    /// Has `follower` told of each later change, for as long as the result lives.
    Following follow(std::function<void(const T&)> follower) { return followers_.add(std::move(follower)); }

private:
    T value_{};
    Followers<const T&> followers_;
};

}
