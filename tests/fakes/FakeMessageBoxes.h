#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "fakes/Said.h"
#include "seams/MessageBoxes.h"

namespace corvane::test {

struct ShownBox {
    std::wstring text;
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
    bool operator==(const ShownBox&) const = default;
};
using ShownBoxes = std::vector<ShownBox>;

inline ShownBox Notice(std::wstring text, BoxIcon icon = BoxIcon::None) {
    return {std::move(text), BoxButtons::Ok, icon};
}
inline ShownBox Question(std::wstring text) {
    return {std::move(text), BoxButtons::YesNo, BoxIcon::None};
}

// How a failed comparison shows a box.
inline void PrintTo(const ShownBox& box, std::ostream* out) {
    *out << testing::PrintToString(box.text) << " with buttons " << static_cast<int>(box.buttons)
         << " and icon " << static_cast<int>(box.icon);
}

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
        WriteDown("box", text);
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
    ShownBoxes Take() { return std::exchange(shown_, {}); }

    std::deque<BoxAnswer> answers;
    std::function<void()> onShow;

private:
    ShownBoxes shown_;
};

}  // namespace corvane::test
