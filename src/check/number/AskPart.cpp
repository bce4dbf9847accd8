// A caller ID searched in GoldMine, without anything being shown there.

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "calls/CallerID.h"
#include "calls/ContactSearch.h"
#include "check/number/CommandReader.h"
#include "check/number/NumberParts.h"
#include "check/Survey.h"
#include "check/Talk.h"
#include "environment/GoldMineProcess.h"
#include "gmapi/DataStream.h"
#include "gmapi/Envelope.h"
#include "gmapi/GMUI.h"
#include "gmapi/Macro.h"
#include "gmapi/WindowCommands.h"
#include "seams/GoldMine.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Hands macros and queries on to GoldMine and nothing else. What would show something there is
// answered here; a look-up by somebody else.
class QuietGoldMine final : public GoldMine {
    template <class Body>
    auto Noting(const Body& body) {
        try {
            return body();
        } catch (const RuntimeError& caught) {
            error = caught;
            throw;
        }
    }

public:
    QuietGoldMine(GoldMine& goldMine, const XPathReader& xpath)
        : goldMine_(goldMine), reader_(xpath) {}

    [[nodiscard]] bool connected() const override { return goldMine_.connected(); }
    void Connect() override {
        Noting([&] { goldMine_.Connect(); });
    }
    void Release() noexcept override { goldMine_.Release(); }
    void setListener(WindowUpDownListener*) override {}
    [[nodiscard]] std::wstring Send(const std::wstring& command) override {
        const std::wstring call = reader_.Call(command);
        if (call == L"Macro" || call == L"DataStream")
            return Noting([&] { return goldMine_.Send(command); });
        if (call == L"CallerID" &&
            !lookUp(reader_.Data(command, L"Phone"), reader_.Data(command, L"All") == L"1")) {
            return {};
        }
        return SuccessReply(call, L"1");
    }

    std::function<bool(const std::wstring& phone, bool allPhones)> lookUp;
    std::optional<RuntimeError> error;  // the last one: later commands may succeed again

private:
    GoldMine& goldMine_;
    CommandReader reader_;
};

// In place of GoldMine's own look-up.
std::wstring PhoneQuery(const std::wstring& phone, bool allPhones) {
    const std::wstring value = Join(L"'", ReplaceAll(phone, L"'", L"''"), L"'");
    std::wstring query = Join(L"select AccountNo from Contact1 where Phone1 = ", value);
    if (allPhones)
        query += Join(L" or Phone2 = ", value, L" or Phone3 = ", value);
    return query;
}

// Why GoldMine is not asked; empty when it is.
std::wstring WhyNotAsked(const CheckSurroundings& around, const GoldMineProcess& process) {
    const auto client = process.RunningClient();
    if (!client)
        return L"is not running in this session";
    // An administrator's connection would start a GoldMine of its own.
    if (around.survey.Elevated(around.processes.OwnProcessId()) == true &&
        around.survey.Elevated(*client) == false) {
        return L"runs without an administrator's rights: start CorvaneCheck without them, too";
    }
    return {};
}

}  // namespace

NumberPart AskGoldMine(const std::wstring& text, const CheckSurroundings& around) {
    NumberPart part;
    Form form;
    LoadSettings(form, around, part);
    part.warnings.clear();  // told before
    Talk talk;
    GoldMineProcess process(form, around.processes, talk, talk);
    if (std::wstring why = WhyNotAsked(around, process); !why.empty()) {
        part.rows.emplace_back(L"GoldMine", std::move(why));
        part.exitCode = ExitCode::broken;
        return part;
    }
    form.txtCallerID.setText(text);
    if (!NormalizeCallerID(form, talk)) {
        part.rows.emplace_back(L"GoldMine", L"is not asked");
        return part;
    }

    QuietGoldMine goldMine(around.goldMine, around.xpath);
    GMUI gmui(goldMine, around.xpath, form, talk, talk, around.clock);
    gmui.ConnectOnlyWhile([&] { return process.RunningClient().has_value(); });
    Macro macro(gmui);
    DataStream dataStream(gmui, form, talk, talk);
    WindowCommands windows(gmui);
    goldMine.lookUp = [&](const std::wstring& phone, bool allPhones) {
        const std::wstring query = PhoneQuery(phone, allPhones);
        const auto rows = dataStream.RunQuery(query);
        const std::int32_t count = rows ? rows->rowCount : 0;
        part.rows.emplace_back(L"query", query);
        part.rows.emplace_back(L"matches", std::to_wstring(count));
        if (count > 1)
            part.Warn(L"several contacts have this number: GoldMine chooses one of them");
        return count > 0;
    };
    ContactSearch search(form, macro, dataStream, windows, talk, talk);
    const bool found = search.SearchContact(ShowInGoldMine::No);
    if (goldMine.error) {
        part.rows.emplace_back(
            L"GoldMine",
            Join(L"cannot be asked: ",
                 TrimBlanks(ReplaceAll(goldMine.error->description, lineBreak, L" "))));
        part.exitCode = ExitCode::broken;
        return part;
    }
    // In the words of the program's log.
    for (const std::wstring& line : talk.lines)
        part.rows.emplace_back(L"result", ReplaceAll(line, lineBreak, L" "));
    part.rows.emplace_back(L"note",
                           L"GoldMine's own look-up shows the contact, so it was not asked; it may "
                           L"match more");
    if (!found)
        part.Warn(L"no contact was found this way");
    return part;
}

}  // namespace corvane
