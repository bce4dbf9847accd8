#pragma once

#include <string_view>

namespace corvane {

// What a line of the log says about a call.
enum class Saying {
    nothing,
    separator,
    started,        // with parameters, which are the detail
    startedByHand,  // without
    ignored,
    versionKnown,
    popMoment,      // at which event the contact is to be searched; the text says which
    historyMoment,  // at which event history is to be created
    popSearch,
    searchDone,
    found,
    notFound,
    done,  // something of the event was done; the text says what
    linkPrepared,
    dialogAsked,
    dialogFilled,
    dialed,
    slowCommand,
    trouble,
    runTimeError,
    completed,
    ended,
};

// Where a message box stood: the line was written behind it, or before it.
enum class BoxOfLine { none, before, behind };

struct LogMessage {
    Saying saying = Saying::nothing;
    BoxOfLine box = BoxOfLine::none;
    std::wstring_view text{};   // in the words of a person; may be empty
    std::string_view detail{};  // of a message whose end matters, what stands behind its beginning
    bool moreLines = false;     // it may break lines
};

[[nodiscard]] LogMessage UnderstandMessage(std::string_view message);

}  // namespace corvane
