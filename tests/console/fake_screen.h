#pragma once

#include "console/screen.h"

#include <string>
#include <vector>

namespace tonquay::console {

class FakeScreen final : public Screen {
public:
    explicit FakeScreen(int columns = 0) : columns_(columns) {}

    void write(std::string_view text) override { out += text; }
    void complain(std::string_view line) override { problems.emplace_back(line); }
    bool isTerminal() const override { return columns_ > 0; }
    int columns() const override { return columns_; }
    bool flush() override { return !broken; }

    std::string out;
    std::vector<std::string> problems;
    bool broken = false;

private:
    int columns_;
};

/// What a terminal shows after such output: the cursor moves, erasing and wrapping at the right edge that the program
/// may use. Anything else that begins with ESC counts as a fault.
class Terminal {
public:
    explicit Terminal(int columns) : columns_(static_cast<std::size_t>(columns)) {}

    void show(std::string_view output);
    std::vector<std::string> lines() const;
    bool wrapped = false;
    bool unknownCode = false;

private:
    void put(char32_t character);

    std::size_t columns_;
    std::vector<std::vector<char32_t>> screen_{{}};
    std::size_t row_ = 0;
    std::size_t column_ = 0;
};

}
