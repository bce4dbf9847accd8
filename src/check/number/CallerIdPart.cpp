// A number as the caller ID of a call: what it is reduced to, and what GoldMine would be asked.

#include <string>
#include <utility>
#include <vector>

#include "calls/CallerID.h"
#include "calls/ContactSearch.h"
#include "check/number/CommandReader.h"
#include "check/number/NumberParts.h"
#include "check/SavedSettings.h"
#include "check/Talk.h"
#include "gmapi/DataStream.h"
#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/WindowCommands.h"
#include "seams/GoldMine.h"
#include "ui/form/Form.h"
#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr std::wstring_view account = L"Contact1->AccountNo";

// A GoldMine that has an open record and finds nobody: the search goes through all that it would
// ask, and this one only notes it.
class NotingGoldMine final : public GoldMine {
public:
    explicit NotingGoldMine(const XPathReader& xpath) : reader_(xpath) {}

    [[nodiscard]] bool connected() const override { return true; }
    void Connect() override {}
    void Release() noexcept override {}
    void setListener(WindowUpDownListener*) override {}
    [[nodiscard]] std::wstring Send(const std::wstring& command) override {
        const std::wstring call = reader_.Call(command);
        if (call == L"Macro")
            return Macro(reader_.Data(command, L"Macro"));
        if (call == L"DataStream") {
            asked.push_back(Join(L"query: ", reader_.Data(command, L"SQL")));
            constexpr std::wstring_view noArea = L"0";
            return SuccessReply(call, noArea);
        }
        if (call == L"CallerID") {
            asked.push_back(Join(
                L"GoldMine's own look-up, which shows the contact: ",
                reader_.Data(command, L"All") == L"1" ? L"Phone1, Phone2 and Phone3" : L"Phone1"));
        }
        return {};
    }

    std::vector<std::wstring> asked;

private:
    std::wstring Macro(const std::wstring& name) {
        if (name == account) {
            asked.emplace_back(L"account of the open record");
            return SuccessReply(L"Macro", L"[account]");
        }
        asked.push_back(Join(std::wstring_view(name).substr(1), L" of the open record"));
        return SuccessReply(L"Macro", L"");
    }

    CommandReader reader_;
};

std::vector<std::wstring> WouldBeAsked(Form& form, const CheckSurroundings& around) {
    Talk talk;
    NotingGoldMine goldMine(around.xpath);
    GMUI gmui(goldMine, around.xpath, form, talk, talk, around.clock);
    Macro macro(gmui);
    DataStream dataStream(gmui, form, talk, talk);
    WindowCommands windows(gmui);
    ContactSearch search(form, macro, dataStream, windows, talk, talk);
    static_cast<void>(search.SearchContact(ShowInGoldMine::No));
    return std::move(goldMine.asked);
}

}  // namespace

void LoadSettings(Form& form, const CheckSurroundings& around, NumberPart& part) {
    for (const UnfitSetting& setting : LoadSavedSettings(form, around.registry)) {
        if (!setting.converts) {
            part.Warn(Join(setting.name, L" is stored as ", Quoted(setting.text),
                           L", which does not convert; its default counts here"));
        }
    }
    // How long a command takes is of no interest here.
    form.chkLogCOMCalls.setChecked(false);
}

NumberPart AsCallerID(const std::wstring& text, const CheckSurroundings& around) {
    NumberPart part;
    Form form;
    LoadSettings(form, around, part);
    Talk talk;
    form.txtCallerID.setText(text);
    part.rows.emplace_back(L"received", text);
    const bool taken = NormalizeCallerID(form, talk);
    const std::wstring& digits = form.txtCallerIDDigits.text();
    part.rows.emplace_back(L"digits", digits);
    if (!taken) {
        part.Warn(talk.last());
        return part;
    }
    if (form.chkIgnoreShortCallerID.checked()) {
        part.rows.emplace_back(L"length", Join(std::to_wstring(digits.size()), L", at least ",
                                               form.txtCallerIDMinLength.text(), L" are wanted"));
    }
    const std::wstring& searched = form.txtCallerIDFormatted.text();
    if (ExtractDigits(digits, false, false).ends_with(L'1' + ExtractDigits(searched, false, false)))
        part.rows.emplace_back(L"leading 1", L"left out");
    part.rows.emplace_back(L"searched as", searched);
    std::wstring what = L"asked";
    for (std::wstring& question : WouldBeAsked(form, around))
        part.rows.emplace_back(std::exchange(what, L"then"), std::move(question));
    if (!form.chkPopOnInboundCall.checked() && !form.chkCreateHistory.checked())
        part.Warn(L"this user's settings neither search for callers nor keep a history");
    if (!form.chkGlobalEnable.checked())
        part.Warn(L"the master switch is off: no call is handled");
    return part;
}

}  // namespace corvane
