#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/MessageBoxes.h"

namespace corvane::test {

struct ShownBox {
    std::wstring text;
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
    bool operator==(const ShownBox&) const = default;
};

// Keeps the boxes shown; a box that no test took note of is a failure.
class FakeMessageBoxes final : public MessageBoxes {
public:
    ~FakeMessageBoxes() override {
        for (const ShownBox& box : shown_) {
            ADD_FAILURE() << "unexpected message box: "
                          << std::string(box.text.begin(), box.text.end());
        }
    }

    // A question takes the next of the answers; one without an answer is a failure.
    BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) override {
        shown_.push_back({std::wstring(text), buttons, icon});
        if (onShow)
            onShow();
        if (buttons == BoxButtons::Ok)
            return BoxAnswer::Ok;
        if (answers.empty()) {
            ADD_FAILURE() << "a question without an answer";
            return BoxAnswer::Cancel;
        }
        const BoxAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    // The boxes since the last call.
    std::vector<ShownBox> Take() { return std::exchange(shown_, {}); }

    std::deque<BoxAnswer> answers;
    std::function<void()> onShow;

private:
    std::vector<ShownBox> shown_;
};

}  // namespace corvane::test
