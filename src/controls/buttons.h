#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <cstdint>
#include <string>

namespace tonquay::controls {

struct Button {
    Property<std::wstring> caption;
    Property<bool> enabled{true};
    Property<bool> visible{true};
    Property<std::wstring> toolTip;

    Handler<> click;

    /// What a press by the user does: nothing while it is disabled.
    void press() const
    {
        if (enabled)
            click();
    }
};

/// A box with a tick. Code that changes its value fires click, as a press by the user does.
class CheckBox {
public:
    Property<std::wstring> caption;
    Property<bool> enabled{true};
    Property<bool> visible{true};
    Property<std::wstring> toolTip;
    Handler<> click;
    Handler<> mouseUp; ///< released by the user over it, or its key; the value is the new one

    std::int16_t value() const { return value_; }
    Following follow(std::function<void(const std::int16_t&)> follower) { return value_.follow(std::move(follower)); }

    /// 0 or 1; a display may hold another number as it stands.
    void setValue(std::int16_t value)
    {
        if (value == value_)
            return;
        value_ = value;
        click();
    }

private:
    Property<std::int16_t> value_{0};
};

/// One of a group of choices. Code that switches it on fires click; the group is for its form to keep.
class OptionButton {
public:
    Property<std::wstring> caption;
    Property<bool> enabled{true};
    Property<bool> visible{true};
    Handler<> click;

    bool value() const { return value_; }
    Following follow(std::function<void(const bool&)> follower) { return value_.follow(std::move(follower)); }

    void setValue(bool on)
    {
        if (on == value_)
            return;
        value_ = on;
        if (on)
            click();
    }

private:
    Property<bool> value_{false};
};

}
