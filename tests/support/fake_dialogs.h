#pragma once

#include "platform/dialogs.h"

#include <deque>
#include <functional>
#include <vector>

namespace tonquay::test {

/// Records what would have been shown, and answers from queues. Without an answer left, a box with OK answers ok, one
/// with Yes and No answers no, and an input box was cancelled.
class FakeDialogs final : public platform::Dialogs {
public:
    struct Box {
        std::wstring title;
        std::wstring text;
        Icon icon = Icon::none;
        Buttons buttons = Buttons::ok;
        bool operator==(const Box&) const = default;
    };
    struct Input {
        std::wstring title;
        std::wstring prompt;
        std::wstring defaultText;
    };

    Answer messageBox(std::wstring_view title, std::wstring_view text, Icon icon, Buttons buttons) override
    {
        boxes.push_back({std::wstring(title), std::wstring(text), icon, buttons});
        if (whileOpen)
            whileOpen();
        if (answers.empty())
            return buttons == Buttons::ok ? Answer::ok : Answer::no;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::optional<std::wstring> inputBox(std::wstring_view title, std::wstring_view prompt,
                                         std::wstring_view defaultText) override
    {
        inputs.push_back({std::wstring(title), std::wstring(prompt), std::wstring(defaultText)});
        if (whileOpen)
            whileOpen();
        if (typed.empty())
            return std::nullopt;
        auto text = std::move(typed.front());
        typed.pop_front();
        return text;
    }

    std::optional<std::wstring> openFile(const FileQuestion& question) override
    {
        questions.push_back(question);
        if (chosenFiles.empty())
            return std::nullopt;
        auto file = std::move(chosenFiles.front());
        chosenFiles.pop_front();
        return file;
    }

    void beep() override { ++beeps; }
    void setPointer(Pointer shown) override { pointer = shown; }

    std::vector<Box> boxes;
    std::vector<Input> inputs;
    std::vector<FileQuestion> questions;
    std::deque<Answer> answers;
    std::deque<std::optional<std::wstring>> chosenFiles;
    std::deque<std::optional<std::wstring>> typed;
    std::function<void()> whileOpen; ///< runs while a box is open: what the loop behind it would do
    int beeps = 0;
    Pointer pointer = Pointer::normal;
};

}
