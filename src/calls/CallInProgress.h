#pragma once

#include <utility>

#include "ui/form/Form.h"

namespace corvane {

// Whether a call is being processed or GoldMine's dialog filled in for one; either may begin within
// the other. Their waits let the user reach the window: no other call begins meanwhile, and a close
// that is asked for comes afterwards.
class CallInProgress {
public:
    explicit CallInProgress(Form& form) : form_(form) {}

    [[nodiscard]] bool busy() const { return parts_ > 0; }
    void CloseAfterwards() { closeWaits_ = true; }

    // Stands for a part of the work, for as long as it lives.
    class Part {
    public:
        explicit Part(CallInProgress& call) : call_(call) { ++call_.parts_; }
        ~Part() {
            --call_.parts_;
            if (!call_.busy() && std::exchange(call_.closeWaits_, false))
                call_.form_.Close();
        }
        Part(const Part&) = delete;
        Part& operator=(const Part&) = delete;

    private:
        CallInProgress& call_;
    };

private:
    Form& form_;
    int parts_ = 0;
    bool closeWaits_ = false;
};

}  // namespace corvane
