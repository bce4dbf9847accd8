#include "check/calls/LogMessage.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {

namespace {

struct MessageForm {
    std::string_view beginning;
    Saying saying;
    std::wstring_view text{};
    BoxOfLine box = BoxOfLine::none;
    bool moreLines = false;
};

constexpr auto messageForms = std::to_array<MessageForm>({
    {"Inbound call search for CallerID:  no searching requested", Saying::popMoment, L"never"},
    {"Inbound call search for CallerID:  requested while", Saying::popMoment, L"ringing"},
    {"Inbound call search for CallerID:  requested when", Saying::popMoment, L"answered"},
    {"Inbound call search for CallerID:  searching", Saying::popSearch},
    {"Inbound call search for CallerID:  processing completed.", Saying::searchDone},
    {"History creation:  no history creation requested.", Saying::historyMoment, L"never"},
    {"History creation:  requested at _start_", Saying::historyMoment, L"ringing"},
    {"History creation:  requested at _connection_", Saying::historyMoment, L"answered"},
    {"History creation:  requested at _end_", Saying::historyMoment, L"ended"},
    {"--------------------", Saying::separator},
    {"Finished unloading form", Saying::ended},
    {"Call processing completed", Saying::completed},
    {"GoldMine version ", Saying::versionKnown},
    {"Found ", Saying::found},
    {"Did not find GoldMine contact for ", Saying::notFound},
    {"> COM command > ", Saying::slowCommand, {}, BoxOfLine::none, true},
    {"Prepared link to ", Saying::linkPrepared},
    {"Created incoming call history.", Saying::done, L"history created"},
    {"Created outgoing call history.", Saying::done, L"history created"},
    {"Opened history item window.", Saying::done, L"history item opened"},
    {"Opening Complete Call dialog", Saying::dialogAsked},
    {"Finished opening Complete Call dialog", Saying::dialogFilled, L"Complete Call filled in"},
    {"Dialed ", Saying::dialed},
    {"Ignored non-numeric CallerID", Saying::ignored, L"no digits in the caller ID"},
    {"Ignored short CallerID", Saying::ignored, L"caller ID too short"},
    {"Corvane to 3CX disabled--", Saying::ignored, L"master switch is off"},
    {"No files found in recordings folder", Saying::done, L"no link: no recording there"},
    {"Run-time error '", Saying::runTimeError, {}, BoxOfLine::behind},

    {"Parameters found but GoldMine not running.", Saying::trouble, L"GoldMine was not running"},
    {"GoldMine is running but could not retrieve its path", Saying::trouble,
     L"GoldMine runs as administrator", BoxOfLine::before},
    {"GoldMine is running but", Saying::trouble, L"GoldMine's process could not be told",
     BoxOfLine::before},
    {"Could not connect to GoldMine's user interface", Saying::trouble,
     L"could not connect to GoldMine", BoxOfLine::before},
    {"GoldMine may be running but you are not logged in", Saying::trouble,
     L"not logged in to GoldMine", BoxOfLine::before},
    {"Lost connection to GoldMine's user interface", Saying::trouble,
     L"lost the connection to GoldMine", BoxOfLine::before},
    {"Error retrieving GoldMine version.", Saying::trouble, L"GoldMine told no version",
     BoxOfLine::before},
    {"Error parsing GoldMine version", Saying::trouble, L"GoldMine's version is none",
     BoxOfLine::before},
    {"Corvane requires GoldMine 6.7", Saying::trouble, L"GoldMine is too old", BoxOfLine::behind},
    {"Could not retrieve ProgramDataDir or SysDir", Saying::trouble,
     L"GoldMine told no data folder", BoxOfLine::before},
    {"Could not retrieve UserName", Saying::trouble, L"GoldMine told no user", BoxOfLine::before},
    {"Could not find GoldMine <user>.INI file", Saying::trouble,
     L"the user's GoldMine INI file is missing", BoxOfLine::before},
    {"Declined: ", Saying::trouble, L"a change of GoldMine's INI file was declined",
     BoxOfLine::before},
    {"Failed to update ", Saying::trouble, L"GoldMine's INI file could not be changed",
     BoxOfLine::before},
    {"Could not retrieve GoldMine AccountNo", Saying::trouble, L"GoldMine told no account number",
     BoxOfLine::before},
    {"Error calling DataStream ", Saying::trouble, L"GoldMine refused a query", BoxOfLine::before,
     true},
    {"There is no field number 1", Saying::trouble, L"a query's row was empty", BoxOfLine::before,
     true},
    {"Corvane could not position to", Saying::trouble, L"the record could not be shown"},
    {"Could not insert call history.", Saying::trouble, L"history not created"},
    {"Failed to create history", Saying::trouble, L"history not created", BoxOfLine::before},
    {"Could not update history Notes", Saying::trouble, L"link not in the notes"},
    {"Could not open history item window.", Saying::trouble, L"history item not opened"},
    {"Could not open Complete Call dialog.", Saying::trouble, L"Complete Call did not open"},
    {"Could not watch for Complete Call dialog", Saying::trouble,
     L"GoldMine does not tell of its dialogs"},
    {"Could not fill in Ref", Saying::trouble, L"Ref not filled in"},
    {"Could not fill in Notes", Saying::trouble, L"Notes not filled in"},
    {"Could not access recordings folder", Saying::trouble, L"no link: recordings folder not there",
     BoxOfLine::before},
    {"Could not read all of recordings folder", Saying::trouble,
     L"no link: recordings folder went away"},
    {"You need at least Read and List Folder", Saying::trouble,
     L"no link: recordings folder not readable"},
    {"Number to dial ", Saying::trouble, L"no digits to dial", BoxOfLine::before},
    {"Call to number ", Saying::trouble, L"3CX's call trigger did not start", BoxOfLine::before},
});

// By the first letter; of beginnings that begin alike, the longer one stands first.
constexpr auto sortedForms = [] {
    auto sorted = messageForms;
    std::ranges::sort(sorted, [](const MessageForm& one, const MessageForm& other) {
        return std::pair(one.beginning[0], other.beginning.size()) <
               std::pair(other.beginning[0], one.beginning.size());
    });
    return sorted;
}();

// The messages whose ends tell them apart.
LogMessage WithTwoEnds(std::string_view message) {
    constexpr std::string_view start = "Corvane ";
    constexpr std::string_view with = " started with param(s): ";
    if (message.starts_with(start)) {
        if (const auto at = message.find(with); at != std::string_view::npos)
            return {.saying = Saying::started, .detail = message.substr(at + with.size())};
        if (message.ends_with(" started without params."))
            return {.saying = Saying::startedByHand};
    }
    if (message.starts_with("The most recent file in the recordings folder")) {
        const bool ofAnotherCall =
            message.find(" does not include the 3CX Call Identifier ") != std::string_view::npos;
        return {.saying = Saying::done,
                .text = ofAnotherCall ? L"no link: newest recording is of another call"
                                      : L"no link: newest recording is too old"};
    }
    return {};
}

bool HasDetail(Saying saying) {
    return saying == Saying::found || saying == Saying::linkPrepared || saying == Saying::dialed ||
           saying == Saying::slowCommand || saying == Saying::runTimeError;
}

}  // namespace

LogMessage UnderstandMessage(std::string_view message) {
    if (message.empty())
        return {};
    const auto firstLetter = [](const MessageForm& each) { return each.beginning[0]; };
    const auto* form = std::ranges::lower_bound(sortedForms, message[0], {}, firstLetter);
    const auto* const end = sortedForms.end();
    while (form != end && firstLetter(*form) == message[0] &&
           !message.starts_with(form->beginning)) {
        ++form;
    }
    if (form == end || firstLetter(*form) != message[0])
        return WithTwoEnds(message);
    return {.saying = form->saying,
            .box = form->box,
            .text = form->text,
            .detail = HasDetail(form->saying) ? message.substr(form->beginning.size())
                                              : std::string_view(),
            .moreLines = form->moreLines};
}

}  // namespace corvane
