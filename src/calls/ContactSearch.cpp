#include "calls/ContactSearch.h"

#include <array>

#include "gmapi/DataStream.h"
#include "gmapi/Macro.h"
#include "gmapi/WindowCommands.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr int statusBarDelay = 10;  // in GoldMine's unit

}  // namespace

ContactSearch::ContactSearch(Form& form, Macro& macro, DataStream& dataStream,
                             WindowCommands& windows, StatusWriter& status, MessageBoxes& boxes)
    : form_(form),
      macro_(macro),
      dataStream_(dataStream),
      windows_(windows),
      status_(status),
      boxes_(boxes) {}

const std::wstring& ContactSearch::cid() const {
    return form_.txtCallerIDFormatted.text();
}

bool ContactSearch::SearchContact(ShowInGoldMine show) {
    // An empty caller ID is nobody's: it would equal every empty phone field.
    if (!TrimBlanks(cid()).empty() && FindContact(show))
        return true;
    status_.WriteStatus(
        Join(L"Did not find GoldMine contact for ", cid(), L". Further call processing skipped."));
    ShowMessageInGoldMine(Join(L"Corvane could not find a contact matching CallerID ", cid(),
                               L". Further call processing skipped."));
    return false;
}

bool ContactSearch::FindContact(ShowInGoldMine show) {
    if (SearchCurrentRecord(show))
        return true;

    const auto display = form_.optPopCurrentWindow.selected() ? ContactDisplay::CurrentWindow
                                                              : ContactDisplay::NewWindow;
    if (windows_.CallerID(cid(), display, !form_.optPhone1Only.selected())) {
        ReportFound(L" in a primary contact record.", show);
        return true;
    }
    if (form_.chkSearchInAddlContacts.checked()) {
        if (const auto accountNumber = SearchAdditionalContacts(L"")) {
            ReportFound(L" in an Additional Contact record.", show);
            PositionToPrimaryRecord(*accountNumber, form_.optPopNewWindow.selected());
            return true;
        }
    }
    return false;
}

bool ContactSearch::SearchCurrentRecord(ShowInGoldMine show) {
    struct PhoneField {
        std::wstring_view macro;
        std::wstring_view found;
        bool searched;
    };
    const bool allPhones = form_.optPhone123.selected();
    const auto phoneFields = std::to_array<PhoneField>({
        {L"&Phone1", L" in Phone1 of the current record.", true},
        {L"&Phone2", L" in Phone2 of the current record.", allPhones},
        {L"&Phone3", L" in Phone3 of the current record.", allPhones},
    });
    for (const PhoneField& field : phoneFields) {
        if (!field.searched)
            continue;
        const auto value = macro_.Value(field.macro);
        if (!value)
            return false;  // no record is open
        if (*value == cid()) {
            ReportFound(field.found, show);
            return true;
        }
    }
    if (!form_.chkSearchInAddlContacts.checked())
        return false;

    const auto accountNumber = macro_.AccountNo();
    if (!accountNumber) {
        constexpr std::wstring_view failure =
            L"Could not retrieve GoldMine AccountNo for current record, so can't check Additional "
            L"Contacts for CallerID.";
        boxes_.Notify(failure);
        status_.WriteStatus(failure);
        return false;
    }
    if (!SearchAdditionalContacts(*accountNumber))
        return false;
    ReportFound(L" in an Additional Contact of the current record.", show);
    return true;
}

std::optional<std::wstring> ContactSearch::SearchAdditionalContacts(
    std::wstring_view accountNumber) {
    // The values stand in the statement as they are: GoldMine reports what SQL makes of them.
    const std::wstring ofAccount =
        accountNumber.empty() ? L"where " : Join(L"where AccountNo = '", accountNumber, L"' and ");
    return dataStream_.FirstFieldOfQuery(Join(L"select AccountNo from ContSupp ", ofAccount,
                                              L"RecType = 'C' and (phone = '", cid(),
                                              L"' or fax = '", cid(), L"')"));
}

void ContactSearch::PositionToPrimaryRecord(std::wstring_view accountNumber, bool inNewWindow) {
    const bool positioned =
        inNewWindow ? PositionInNewWindow(accountNumber) : PositionInCurrentWindow(accountNumber);
    if (positioned)
        return;
    const std::wstring failure =
        Join(L"Corvane could not position to corresponding primary record",
             inNewWindow ? L" in new window. Try setting Corvane to show contact in CURRENT window."
                         : L".");
    status_.WriteStatus(failure);
    ShowMessageInGoldMine(failure);
}

bool ContactSearch::PositionInNewWindow(std::wstring_view accountNumber) {
    const auto phone1 = dataStream_.FirstFieldOfQuery(
        Join(L"select Phone1 from Contact1 where AccountNo = '", accountNumber, L"'"));
    if (!phone1 || phone1->empty())
        return false;
    return windows_.CallerID(*phone1, ContactDisplay::NewWindow, false);
}

bool ContactSearch::PositionInCurrentWindow(std::wstring_view accountNumber) {
    constexpr std::wstring_view done = L"1";
    return windows_.RecordObj(L"SetObject", L"") == done &&
           windows_.RecordObj(L"SetRecord", L"Primary") == done &&
           windows_.RecordObj(L"SetOrder", L"ContAcc") == done &&
           windows_.RecordObj(L"Seek", accountNumber) == done;
}

void ContactSearch::ReportFound(std::wstring_view where, ShowInGoldMine show) {
    status_.WriteStatus(Join(L"Found ", cid(), where));
    if (show == ShowInGoldMine::Yes)
        ShowMessageInGoldMine(Join(L"Corvane found ", cid(), where));
}

void ContactSearch::ShowMessageInGoldMine(std::wstring_view message) {
    windows_.StatusMsg(message, statusBarDelay);
}

}  // namespace corvane
