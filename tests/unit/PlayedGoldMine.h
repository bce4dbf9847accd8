#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/Gmapi.h"

namespace corvane::test {

// Plays the GoldMine of a FakeGoldMine: carries out every command that the program sends, on one
// open record, its history and one Complete Call dialog, and answers as GoldMine does.
class PlayedGoldMine {
public:
    using gmapi = test_support::Gmapi<wchar_t>;

    struct HistoryEntry {
        std::wstring ref;
        std::wstring notes;
    };
    struct Dialog {
        std::wstring ref;
        std::wstring notes;
        bool operator==(const Dialog&) const = default;
    };

    // The reply to a command that was carried out.
    std::wstring Do(const std::wstring& command) {
        const std::wstring call = CallOf(command);
        const auto done = [&](const std::wstring& value) {
            return gmapi::Reply(call, L"1", EscapedTwice(value));
        };
        const auto failed = [&] { return gmapi::Reply(call, L"0", L""); };

        // An area, record, window or account that is none.
        if (!Knows(command))
            return failed();
        if (call == L"Macro") {
            const auto macro = macros.find(DataOf(command, L"Macro"));
            return macro == macros.end() ? failed() : done(macro->second);
        }
        if (call == L"CallerID")
            return phones.contains(DataOf(command, L"Phone")) ? done(L"") : failed();
        if (call == L"DataStream")
            return DoDataStream(command);
        if (call == L"InsHist") {
            history.push_back({DataOf(command, L"Ref"), L""});
            return done(historyId);
        }
        if (call == L"Open")
            return done(table);
        if (call == L"Replace") {
            std::wstring& notes = history.back().notes;
            if (DataOf(command, L"Append") == L"0")
                notes.clear();
            notes += DataOf(command, L"NewValue");
            return done(L"1");
        }
        if (call == L"RegisterWindowUpDown") {
            watching = DataOf(command, L"Monitor") == L"1";
            return done(L"Success");
        }
        if (call == L"MenuCommand") {
            dialogUp = dialogShown = true;
            if (dialogInCommand)
                ShowDialog();
            return done(L"The command was executed.");
        }
        if (call == L"GetActiveWindowsList")
            return WindowsList();
        if (call == L"SetControlText") {
            (DataOf(command, L"ID") == L"1016" ? dialog.ref : dialog.notes) =
                DataOf(command, L"Text");
            return gmapi::Reply(L"GMUI_SetControlText", L"1", L"Success");
        }
        if (call == L"PopCalHistItem")
            return done(L"Success");
        return done(L"1");  // StatusMsg, RecordObj, Move, Unlock, Close
    }

    // It ended, and another stands in its place that knows of no dialog.
    void Restart() { watching = dialogShown = dialogUp = false; }

    // The dialog came up, which is reported to who watches.
    void ShowDialog() {
        if (std::exchange(dialogUp, false) && watching)
            onDialog();
    }

    // The call that a command or a reply names.
    static std::wstring CallOf(const std::wstring& command) {
        const auto begin = command.find(L'"') + 1;
        return command.substr(begin, command.find(L'"', begin) - begin);
    }

    static constexpr std::int32_t dialogHandle = 4711;

    std::map<std::wstring, std::wstring> macros;  // by name; one that is missing fails
    std::set<std::wstring> phones;                // of the contacts that GoldMine finds
    // By the beginning of a statement; of others no row matches.
    std::map<std::wstring, std::wstring> packets;
    std::wstring historyId = L"HIST1";  // of a new item, as it is told
    std::wstring recordId = L"HIST1";   // by which its window is opened
    std::vector<HistoryEntry> history;
    Dialog dialog;
    bool dialogInCommand = true;  // it comes up before the menu command is answered
    bool dialogShown = false;
    bool dialogUp = false;  // and nobody was told yet
    bool watching = false;
    std::function<void()> onDialog;

private:
    // As GoldMine puts a value into a reply: clients unescape the text of the node once more.
    static std::wstring EscapedTwice(const std::wstring& value) {
        return gmapi::Escaped(gmapi::Escaped(value));
    }
    static std::wstring DataOf(const std::wstring& command, const std::wstring& name) {
        const std::wstring opening = L"<data name=\"" + name + L"\">";
        const auto at = command.find(opening);
        if (at == std::wstring::npos)
            return {};
        const auto begin = at + opening.size();
        return gmapi::Unescaped(command.substr(begin, command.find(L"</data>", begin) - begin));
    }

    [[nodiscard]] bool Knows(const std::wstring& command) const {
        const std::wstring call = CallOf(command);
        if (call == L"InsHist")
            return DataOf(command, L"AccNo") == macros.at(L"Contact1->AccountNo");
        if (call == L"PopCalHistItem")
            return DataOf(command, L"recID") == recordId;
        if (call == L"SetControlText")
            return dialogShown && DataOf(command, L"hWndParent") == std::to_wstring(dialogHandle);
        if (call == L"Move" && DataOf(command, L"Parameter") != historyId)
            return false;
        const std::wstring area = DataOf(command, L"Area");
        return area == (call == L"DataStream" ? query : table) ||
               command.find(L"\"Area\"") == std::wstring::npos;
    }

    std::wstring DoDataStream(const std::wstring& command) {
        const std::wstring step = DataOf(command, L"Command");
        if (step == L"Query") {
            packet_ = L"3000-0000\n";
            const std::wstring sql = DataOf(command, L"SQL");
            for (const auto& [beginning, packet] : packets) {
                if (sql.starts_with(beginning))
                    packet_ = packet;
            }
            return gmapi::Reply(L"DataStream", L"1", query);
        }
        if (step == L"Fetch")
            return gmapi::FetchReply(packet_);
        return gmapi::Reply(L"DataStream", L"1", L"1");
    }

    [[nodiscard]] std::wstring WindowsList() const {
        const auto control = [](const std::wstring& id, const std::wstring& text) {
            return gmapi::Data(L"C",
                               gmapi::Data(L"ID", id) + gmapi::Data(L"Text", EscapedTwice(text)));
        };
        const std::wstring controls = control(L"1016", dialog.ref) + control(L"1017", dialog.notes);
        const std::wstring window = gmapi::Data(L"hWnd", std::to_wstring(dialogHandle)) +
                                    gmapi::Data(L"Controls", controls);
        return gmapi::Call(
            L"GetActiveWindowsList",
            L"<status code=\"1\">Success</status>" +
                gmapi::Data(L"WindowsList", dialogShown ? gmapi::Data(L"window", window) : L""));
    }

    // Areas.
    inline static const std::wstring query = L"7";
    inline static const std::wstring table = L"9";

    std::wstring packet_;
};

}  // namespace corvane::test
