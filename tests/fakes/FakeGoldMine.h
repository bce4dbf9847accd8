#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/Said.h"
#include "seams/GoldMine.h"
#include "util/RuntimeError.h"

namespace corvane::test {

// Answers commands by their exact texts and keeps what it was sent. A command that no answer is
// known for is a failure.
class FakeGoldMine final : public GoldMine {
public:
    [[nodiscard]] bool connected() const override { return connected_; }
    void Connect() override {
        ++connects;
        if (connectError)
            throw *connectError;
        connected_ = true;
    }
    [[nodiscard]] std::wstring Send(const std::wstring& command) override {
        commands.push_back(command);
        WriteDown("command", command);
        if (onSend)
            onSend(command);
        if (sendError)
            throw *std::exchange(sendError, std::nullopt);
        std::wstring reply = Answer(command);
        WriteDown("reply", reply);
        return reply;
    }
    void Release() noexcept override {
        ++releases;
        connected_ = false;
    }
    void setListener(WindowUpDownListener* listener) override { listener_ = listener; }
    void RaiseWindowUpDown(const std::wstring& windowName, bool up, std::int32_t windowHandle) {
        if (listener_)
            listener_->moGMUI_WindowUpDown(windowName, up, windowHandle);
    }

    std::map<std::wstring, std::wstring> answers;
    std::function<std::wstring(const std::wstring&)> answerAll;
    std::function<void(const std::wstring&)> onSend;
    std::optional<RuntimeError> connectError;
    std::optional<RuntimeError> sendError;  // for the next command
    std::vector<std::wstring> commands;
    int connects = 0;
    int releases = 0;

private:
    std::wstring Answer(const std::wstring& command) {
        if (answerAll)
            return answerAll(command);
        const auto answer = answers.find(command);
        if (answer != answers.end())
            return answer->second;
        ADD_FAILURE() << "unexpected command: " << std::string(command.begin(), command.end());
        return {};
    }

    bool connected_ = false;
    WindowUpDownListener* listener_ = nullptr;
};

}  // namespace corvane::test
