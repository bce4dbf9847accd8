// The folder that recordings are linked from.

#include <array>
#include <string>

#include "calls/RecordingLink.h"
#include "check/ReadOnly.h"
#include "check/Survey.h"
#include "check/Talk.h"
#include "check/wiring/Links.h"
#include "seams/Clock.h"
#include "settings/cSimuIniFile.h"
#include "settings/Settings.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr auto linksToRecordings = std::to_array<Link>({
    {L"recordings folder",
     L"See whether the folder's server can be reached, and whether it answers."},
});

// "3 hours ago".
std::wstring Ago(double days) {
    struct Unit {
        double perDay;
        std::wstring_view name;
    };
    for (const Unit& unit : {Unit{1, L"day"}, Unit{24, L"hour"}, Unit{1440, L"minute"}}) {
        const auto count = static_cast<long long>(days * unit.perDay);
        if (count > 0)
            return Join(std::to_wstring(count), L" ", unit.name, count == 1 ? L"" : L"s", L" ago");
    }
    return L"less than a minute ago";
}

// A pair of round brackets that holds something.
bool BearsCallIdentifier(std::wstring_view name) {
    const auto open = name.find(L'(');
    return open != std::wstring_view::npos && name.find(L')', open) > open + 1 &&
           name.find(L')', open) != std::wstring_view::npos;
}

Finding LookAtFolder(const CheckSurroundings& around, Form& form) {
    const std::wstring& folder = form.txtLinkedItemPath.text();
    if (folder.empty()) {
        return {LinkState::Broken, L"none is given, though recordings are to be linked",
                L"Give one on the page GoldMine History."};
    }
    if (!around.files.FolderExists(folder)) {
        return {LinkState::Broken, Join(folder, L" cannot be reached"),
                L"See whether it is there for this user; name it as \\\\Server\\Share\\Folder."};
    }
    if (!around.survey.MayList(folder)) {
        return {LinkState::Broken, Join(folder, L" may not be listed"),
                L"Give this user the permissions Read and List Folder Contents."};
    }
    Talk talk;
    RecordingLink recordings(form, around.files, talk, talk, around.clock);
    const NewestFile newest = recordings.FindNewestFile(folder);
    if (!newest.complete) {
        return {LinkState::Broken, Join(folder, L" could not be read to its end"),
                L"See whether its server stays connected."};
    }
    if (newest.name.empty()) {
        return {LinkState::Warning, Join(folder, L" holds no recording yet"),
                L"See whether 3CX records calls there."};
    }
    const double age = around.clock.Now() - newest.modified;
    const std::wstring seen = Join(folder, L": ", std::to_wstring(newest.filesSeen),
                                   newest.filesSeen == 1 ? L" file" : L" files", L", the newest, ",
                                   newest.name, L", ", Ago(age));
    if (form.chkConfirmLinkCallIdentifier.checked() && !BearsCallIdentifier(newest.name)) {
        return {LinkState::Warning, Join(seen, L", bears no call identifier in round brackets"),
                L"Let 3CX name recordings so, or uncheck \"Only add link if file name includes "
                L"the 3CX Call Identifier no.\"."};
    }
    constexpr double oldAge = 30;
    if (age > oldAge)
        return {LinkState::Warning, seen, L"See whether 3CX still records calls there."};
    return {LinkState::Ok, seen};
}

void LookAtRecordings(const CheckSurroundings& around, Findings& findings) {
    Form form;
    cSimuIniFile store = OwnSettingsStore(around.registry);
    for (Control* option :
         {static_cast<Control*>(&form.chkCreateHistory), static_cast<Control*>(&form.chkCreateLink),
          static_cast<Control*>(&form.txtLinkedItemPath),
          static_cast<Control*>(&form.chkConfirmLinkCallIdentifier)}) {
        LoadOption(*option, store);
    }
    if (form.chkCreateHistory.checked() && form.chkCreateLink.checked())
        findings.Tell(LookAtFolder(around, form));
    else
        findings.Tell({LinkState::Ok, L"recordings are not linked"});
}

}  // namespace

const LinkGroup recordingsLinks{linksToRecordings, &LookAtRecordings};

}  // namespace corvane
