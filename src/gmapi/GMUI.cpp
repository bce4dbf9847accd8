#include "gmapi/GMUI.h"

#include "gmapi/Envelope.h"
#include "gmapi/PlainReply.h"
#include "seams/Clock.h"
#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "ui/form/NumberIn.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring NumberPart(const RuntimeError& error) {
    return Join(L"Error number:  ", std::to_wstring(error.number));
}

std::wstring MessagePart(const RuntimeError& error) {
    return Join(L"Error message:  ", error.description);
}

bool MeansConnectionLost(const RuntimeError& error) {
    return error.number == ErrorNumber::RemoteServerUnavailable ||
           error.number == ErrorNumber::RemoteProcedureCallFailed ||
           error.number == ErrorNumber::ObjectDisconnected ||
           error.number == ErrorNumber::ObjectNotConnected;
}

}  // namespace

GMUI::GMUI(GoldMine& goldMine, const XPathReader& reader, Form& form, StatusWriter& status,
           MessageBoxes& boxes, Clock& clock)
    : goldMine_(goldMine),
      reader_(reader),
      form_(form),
      status_(status),
      boxes_(boxes),
      clock_(clock) {}

std::wstring GMUI::GMUI_Execute(const std::wstring& command) {
    const double begin = clock_.Timer();
    const int lossesBefore = lossesTold_;
    if (!EnsureObject())
        return L"False";
    std::wstring reply;
    try {
        reply = goldMine_.Send(command);
    } catch (RuntimeError& error) {
        // The object is not trusted after a failure; the next command creates it afresh.
        goldMine_.Release();
        if (error.number == ErrorNumber::PermissionDenied) {
            ReportNotLoggedIn(error);
        } else if (MeansConnectionLost(error)) {
            // A command inside this one was lost with it, and has told the user.
            ReportConnectionLost(error, lossesTold_ == lossesBefore);
        } else {
            reportedError_.reset();
            error.source.insert(0, L"GMUI_Execute: ");
            throw;
        }
        Remember(error);
        return {};
    }

    reportedError_.reset();  // an event inside the command may have sent commands of its own
    const auto elapsed = static_cast<float>(clock_.Timer() - begin);
    const TextBox& threshold = form_.txtCOMDurationSeconds;
    if (form_.chkLogCOMCalls.checked() && elapsed >= static_cast<float>(LongIn(threshold))) {
        status_.WriteStatus(Join(L"> COM command > ", threshold.text(), L" second(s) (",
                                 FormatSeconds(elapsed), L" seconds): '", command, L"'"));
    }
    return reply;
}

std::wstring GMUI::SelectNode(const std::wstring& reply, const std::wstring& expression) const {
    return reader_.SelectNode(reply, expression, NodeForm::Text, WhiteSpace::ReadersOwn)
        .value_or(std::wstring());
}

std::optional<std::wstring> GMUI::SelectNodeAsItStands(const std::wstring& reply,
                                                       const std::wstring& expression,
                                                       NodeForm form) const {
    return reader_.SelectNode(reply, expression, form, WhiteSpace::Kept);
}

std::wstring GMUI::StatusValue(const std::wstring& reply) const {
    const auto plain = PlainStatus(reply);
    return Unescape(plain ? *plain : SelectNode(reply, L"/GMAPI/status"));
}

void GMUI::Release() noexcept {
    goldMine_.Release();
}

bool GMUI::EnsureObject() {
    if (goldMine_.connected())
        return true;
    if (clientRuns_ && !clientRuns_()) {
        Remember(MakeRuntimeError(ErrorNumber::RemoteServerUnavailable));
        return false;
    }
    try {
        goldMine_.Connect();
        return true;
    } catch (const RuntimeError& error) {
        ReportNoObject(error);
        Remember(error);
        return false;
    }
}

void GMUI::Remember(const RuntimeError& error) {
    reportedError_ = error;
    reportedError_->reported = true;
}

void GMUI::ReportNoObject(const RuntimeError& error) {
    const std::wstring_view noConnection = L"Could not connect to GoldMine's user interface.";
    const std::wstring_view advice =
        L"GoldMine should be installed locally. If it already is, this error can usually be "
        L"resolved by running the following command from a command prompt (opened with \"Run as "
        L"administrator\"):";
    const std::wstring registration = Join(Quoted(form_.GoldMineExePath), L" /RegServer");
    boxes_.Notify(Join(noConnection, lineBreak, NumberPart(error), lineBreak, MessagePart(error),
                       lineBreak, lineBreak, advice, lineBreak, lineBreak, registration),
                  BoxIcon::Critical);
    status_.WriteStatus(Join(noConnection, L" ", NumberPart(error), L" ", MessagePart(error), L" ",
                             advice, registration));
}

void GMUI::ReportNotLoggedIn(const RuntimeError& error) {
    const std::wstring_view notLoggedIn = L"GoldMine may be running but you are not logged in.";
    const std::wstring_view advice = L"Log in to GoldMine and re-try the operation.";
    boxes_.Notify(Join(notLoggedIn, lineBreak, advice, lineBreak, lineBreak, NumberPart(error),
                       lineBreak, MessagePart(error)));
    status_.WriteStatus(
        Join(notLoggedIn, L" ", advice, L" ", NumberPart(error), L" ", MessagePart(error)));
}

void GMUI::ReportConnectionLost(const RuntimeError& error, bool inBox) {
    const std::wstring_view connectionLost = L"Lost connection to GoldMine's user interface. ";
    const std::wstring_view advice =
        L"If you closed GoldMine before closing Corvane, you can ignore this error.";
    if (inBox) {
        ++lossesTold_;
        boxes_.Notify(Join(connectionLost, lineBreak, advice, lineBreak, lineBreak,
                           NumberPart(error), lineBreak, MessagePart(error)));
    }
    status_.WriteStatus(
        Join(connectionLost, advice, L" ", NumberPart(error), L" ", MessagePart(error)));
}

}  // namespace corvane
