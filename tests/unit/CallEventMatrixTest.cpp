#include <algorithm>
#include <initializer_list>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "DispatcherFixture.h"

// For itself: the short words of the tables would be in the way of other tests.
namespace corvane::test::call_event_matrix {
namespace {

// A notification or call type; every text that has no letter here is `other`.
enum class Letter { S, C, E, I, O, other };
enum class Moment { None, Start, Connect, End };
using enum Letter;
using enum Moment;

struct Parameter {
    std::wstring text;
    Letter letter;
};

struct CallEvent {
    Parameter notification;
    Parameter callType;
    bool pop;
    Moment searchMoment;
    bool createHistory;
    Moment historyMoment;
    bool contactKnown;
};

void PrintTo(const CallEvent& event, std::ostream* out) {
    *out << testing::PrintToString(event.notification.text) << " type "
         << testing::PrintToString(event.callType.text) << " pop " << event.pop << " at "
         << static_cast<int>(event.searchMoment) << " history " << event.createHistory << " at "
         << static_cast<int>(event.historyMoment) << " known " << event.contactKnown;
}

std::vector<CallEvent> EveryCallEvent() {
    const Parameter notifications[] = {{L"S", S},    {L"C", C},     {L"E", E},
                                       {L"", other}, {L"s", other}, {L"X", other}};
    const Parameter callTypes[] = {{L"I", I}, {L"O", O}, {L"", other}, {L"i", other}};
    std::vector<CallEvent> events;
    for (const Parameter& notification : notifications)
        for (const Parameter& callType : callTypes)
            for (const bool pop : {false, true})
                for (const Moment search : {None, Start, Connect})
                    for (const bool create : {false, true})
                        for (const Moment historyMoment : {None, Start, Connect, End})
                            for (const bool known : {false, true})
                                events.push_back({notification, callType, pop, search, create,
                                                  historyMoment, known});
    return events;
}

struct Any {};
constexpr Any any{};

// The values that a row takes of one setting.
template <typename Value>
class Column {
public:
    Column(Any) {}
    Column(Value value) : values_{value} {}
    Column(std::initializer_list<Value> values) : values_(values) {}
    [[nodiscard]] bool Takes(Value value) const {
        return values_.empty() || values_.contains(value);
    }

private:
    std::set<Value> values_;  // none: any
};

// What is expected of every event that its columns take.
template <typename Result, typename... Values>
struct Row {
    std::tuple<Column<Values>...> columns;
    Result result;
    Lines lines;
};

template <typename Result, typename... Values>
const Row<Result, Values...>& TheRow(const std::vector<Row<Result, Values...>>& rows,
                                     const Values&... values) {
    const Row<Result, Values...>* theRow = nullptr;
    for (const Row<Result, Values...>& row : rows) {
        const bool fits = std::apply(
            [&](const auto&... columns) { return (columns.Takes(values) && ...); }, row.columns);
        if (fits && theRow)
            throw std::logic_error("two rows fit");
        if (fits)
            theRow = &row;
    }
    if (!theRow)
        throw std::logic_error("no row fits");
    return *theRow;
}

constexpr bool off = false, on = true;
constexpr bool unknown = false, known = true;
constexpr bool no = false, yes = true;
const Column<Letter> notI{O, other};
const Column<Moment> notStart{None, Connect, End};
const Column<Moment> notConnect{None, Start, End};
const Column<Moment> notEnd{None, Start, Connect};

struct NoResult {};
struct SearchResult {
    int searches;
    bool found;  // and shown in GoldMine
};
struct HistoryResult {
    int searches;
    std::wstring reference;
};

// An event's lines are those of its one row in each of these four tables, in the tables' order.
// Unformatted, so that the columns stand below their names.
// clang-format off
const std::vector<Row<NoResult, Letter, bool, Moment>> searchRequests = {
//    call   pop  search
//    type   box  moment
    {{notI,  any, any},     {}, {}},
    {{I,     off, any},     {}, {
        L"Inbound call search for CallerID:  no searching requested on inbound call."}},
    {{I,     on,  None},    {}, {}},
    {{I,     on,  Start},   {}, {
        L"Inbound call search for CallerID:  requested while inbound call is _ringing_."}},
    {{I,     on,  Connect}, {}, {
        L"Inbound call search for CallerID:  requested when inbound call is _answered_."}},
};

const std::vector<Row<SearchResult, Letter, bool, Moment, Letter, bool>> searches = {
//    call   pop  search
//    type   box  moment      event  contact    searches  found
    {{notI,  any, any,        any,   any},     {0,        no},  {}},
    {{I,     off, any,        any,   any},     {0,        no},  {}},
    {{I,     on,  notStart,   S,     any},     {0,        no},  {
        L"Inbound call search for CallerID:  call start (ringing) event ignored.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  Start,      S,     known},   {1,        yes}, {
        L"Inbound call search for CallerID:  searching while incoming call is ringing.",
        L"Found 555 in Phone1 of the current record.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  Start,      S,     unknown}, {1,        no},  {
        L"Inbound call search for CallerID:  searching while incoming call is ringing.",
        L"Did not find GoldMine contact for 555. Further call processing skipped.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  notConnect, C,     any},     {0,        no},  {
        L"Inbound call search for CallerID:  call connect (answered) event ignored.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  Connect,    C,     known},   {1,        yes}, {
        L"Inbound call search for CallerID:  searching after incoming call was answered.",
        L"Found 555 in Phone1 of the current record.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  Connect,    C,     unknown}, {1,        no},  {
        L"Inbound call search for CallerID:  searching after incoming call was answered.",
        L"Did not find GoldMine contact for 555. Further call processing skipped.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  any,        E,     any},     {0,        no},  {
        L"Inbound call search for CallerID:  call end event ignored.",
        L"Inbound call search for CallerID:  processing completed."}},
    {{I,     on,  any,        other, any},     {0,        no},  {
        L"Inbound call search for CallerID:  processing completed."}},
};

const std::vector<Row<NoResult, bool, Moment>> historyRequests = {
//    create history
//    box    moment
    {{off,   any},     {}, {L"History creation:  no history creation requested."}},
    {{on,    None},    {}, {}},
    {{on,    Start},   {}, {L"History creation:  requested at _start_ of call."}},
    {{on,    Connect}, {}, {L"History creation:  requested at _connection_ of call."}},
    {{on,    End},     {}, {L"History creation:  requested at _end_ of call."}},
};

const std::vector<Row<HistoryResult, bool, Moment, Letter, bool, bool, Letter>> histories = {
//  create history            found in         call
//    box  moment      event  search  contact  type     searches, reference
    {{off, any,        any,   any,    any,     any},   {0, L"(no history)"}, {}},
    {{on,  notStart,   S,     any,    any,     any},   {0, L"(no history)"}, {
        L"History creation:  call start event ignored.",
        L"History creation:  processing completed."}},
    {{on,  Start,      S,     yes,    known,   I},     {0, L"Started incoming call from 555"}, {
        L"Creating history at start of call.",
        L"Created incoming call history.",
        L"Finishing creating history at start of call.",
        L"History creation:  processing completed."}},
    {{on,  Start,      S,     no,     known,   I},     {1, L"Started incoming call from 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at start of call.",
        L"Created incoming call history.",
        L"Finishing creating history at start of call.",
        L"History creation:  processing completed."}},
    {{on,  Start,      S,     no,     known,   O},     {1, L"Started outgoing call to 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at start of call.",
        L"Created outgoing call history.",
        L"Finishing creating history at start of call.",
        L"History creation:  processing completed."}},
    {{on,  Start,      S,     no,     known,   other}, {1, L""}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at start of call.",
        L"Finishing creating history at start of call.",
        L"History creation:  processing completed."}},
    {{on,  Start,      S,     no,     unknown, any},   {1, L"(no history)"}, {
        L"Did not find GoldMine contact for 555. Further call processing skipped.",
        L"History creation:  processing completed."}},
    {{on,  notConnect, C,     any,    any,     any},   {0, L"(no history)"}, {
        L"History creation:  call connect event ignored.",
        L"History creation:  processing completed."}},
    {{on,  Connect,    C,     any,    known,   I},     {1, L"Connected incoming call from 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at connection of call.",
        L"Created incoming call history.",
        L"Finishing creating history at connection of call.",
        L"History creation:  processing completed."}},
    {{on,  Connect,    C,     any,    known,   O},     {1, L"Connected outgoing call to 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at connection of call.",
        L"Created outgoing call history.",
        L"Finishing creating history at connection of call.",
        L"History creation:  processing completed."}},
    {{on,  Connect,    C,     any,    known,   other}, {1, L""}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at connection of call.",
        L"Finishing creating history at connection of call.",
        L"History creation:  processing completed."}},
    {{on,  Connect,    C,     any,    unknown, any},   {1, L"(no history)"}, {
        L"Did not find GoldMine contact for 555. Further call processing skipped.",
        L"History creation:  processing completed."}},
    {{on,  notEnd,     E,     any,    any,     any},   {0, L"(no history)"}, {
        L"History creation:  call end event ignored.",
        L"History creation:  processing completed."}},
    {{on,  End,        E,     any,    known,   I},     {1, L"Ended incoming call from 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at end of call.",
        L"Created incoming call history.",
        L"Finishing creating history at end of call.",
        L"History creation:  processing completed."}},
    {{on,  End,        E,     any,    known,   O},     {1, L"Ended outgoing call to 555"}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at end of call.",
        L"Created outgoing call history.",
        L"Finishing creating history at end of call.",
        L"History creation:  processing completed."}},
    {{on,  End,        E,     any,    known,   other}, {1, L""}, {
        L"Found 555 in Phone1 of the current record.",
        L"Creating history at end of call.",
        L"Finishing creating history at end of call.",
        L"History creation:  processing completed."}},
    {{on,  End,        E,     any,    unknown, any},   {1, L"(no history)"}, {
        L"Did not find GoldMine contact for 555. Further call processing skipped.",
        L"History creation:  processing completed."}},
    {{on,  any,        other, any,    any,     any},   {0, L"(no history)"}, {
        L"History creation:  processing completed."}},
};
// clang-format on

// The event's row in each table.
auto RowsOf(const CallEvent& event) {
    const bool contact = event.contactKnown;
    const Letter notification = event.notification.letter;
    const Letter callType = event.callType.letter;
    const auto& search =
        TheRow(searches, callType, event.pop, event.searchMoment, notification, contact);
    return std::tie(TheRow(searchRequests, callType, event.pop, event.searchMoment), search,
                    TheRow(historyRequests, event.createHistory, event.historyMoment),
                    TheRow(histories, event.createHistory, event.historyMoment, notification,
                           search.result.found, contact, callType));
}

TEST(CallEventTablesTest, EveryEventHasOneRowInEachTableAndEveryRowAnEvent) {
    std::set<const void*> used;
    for (const CallEvent& event : EveryCallEvent()) {
        EXPECT_NO_THROW(
            std::apply([&](const auto&... rows) { (used.insert(&rows), ...); }, RowsOf(event)))
            << testing::PrintToString(event);
    }
    const auto expectUsed = [&](const auto& table) {
        for (const auto& row : table)
            EXPECT_TRUE(used.contains(&row)) << "row " << &row - table.data();
    };
    expectUsed(searchRequests);
    expectUsed(searches);
    expectUsed(historyRequests);
    expectUsed(histories);
}

class CallEventTest : public DispatcherFixture, public testing::WithParamInterface<CallEvent> {};

TEST_P(CallEventTest, DoesWhatIsConfiguredForItsMoment) {
    const CallEvent& event = GetParam();
    contactKnown = event.contactKnown;
    form.txtNotifType.setText(event.notification.text);
    form.txtCallType.setText(event.callType.text);
    form.chkPopOnInboundCall.setChecked(event.pop);
    form.optPopOnInboundCallStart.setSelected(event.searchMoment == Start);
    form.optPopOnInboundCallConnect.setSelected(event.searchMoment == Connect);
    form.chkCreateHistory.setChecked(event.createHistory);
    form.optProcessStart.setSelected(event.historyMoment == Start);
    form.optProcessConnect.setSelected(event.historyMoment == Connect);
    form.optProcessEnd.setSelected(event.historyMoment == End);
    form.chkFillInRef.setChecked(true);

    dispatcher.ProcessCall();

    const auto& [searchRequest, searchRow, historyRequest, historyRow] = RowsOf(event);
    Lines lines;
    for (const Lines& part :
         {searchRequest.lines, searchRow.lines, historyRequest.lines, historyRow.lines}) {
        lines.insert(lines.end(), part.begin(), part.end());
    }
    lines.push_back(L"Call processing completed in 0.000 seconds.");
    EXPECT_EQ(status.lines, lines);
    EXPECT_EQ(Searches(), searchRow.result.searches + historyRow.result.searches);
    EXPECT_EQ(shownInGoldMine, int{searchRow.result.found});
    EXPECT_EQ(SentRef(), historyRow.result.reference);
    EXPECT_TRUE(std::all_of(status.modes.begin(), status.modes.end(),
                            [](LogMode mode) { return mode == LogMode::AsConfigured; }));
}

INSTANTIATE_TEST_SUITE_P(EveryCombination, CallEventTest, testing::ValuesIn(EveryCallEvent()));

}  // namespace
}  // namespace corvane::test::call_event_matrix
