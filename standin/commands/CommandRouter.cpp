#include "commands/CommandRouter.h"

#include "commands/CallContext.h"
#include "commands/DataStreamCommand.h"
#include "commands/MacroCommand.h"
#include "commands/RecordCommands.h"
#include "commands/WindowCommands.h"

namespace practice {
namespace {

struct Routine {
    std::wstring_view call;
    Answer (*run)(CallContext&, const Command&);
};

constexpr Routine routines[] = {
    {L"Macro", RunMacro},
    {L"DataStream", RunDataStream},
    {L"Open", RunOpen},
    {L"Move", RunMove},
    {L"Read", RunRead},
    {L"Replace", RunReplace},
    {L"Unlock", RunUnlock},
    {L"Close", RunClose},
    {L"InsHist", RunInsHist},
    {L"RecordObj", RunRecordObj},
    {L"CallerID", RunCallerID},
    {L"StatusMsg", RunStatusMsg},
    {L"RegisterWindowUpDown", RunRegisterWindowUpDown},
    {L"GetActiveWindowsList", RunGetActiveWindowsList},
    {L"SetControlText", RunSetControlText},
    {L"MenuCommand", RunMenuCommand},
    {L"PopCalHistItem", RunPopCalHistItem},
};

}  // namespace

CommandRouter::CommandRouter(const Options& options, Database& database, Desk& desk, Faults& faults,
                             Journal& journal, EventRaiser& events)
    : options_(options),
      database_(database),
      desk_(desk),
      faults_(faults),
      journal_(journal),
      events_(events) {}

Answer CommandRouter::Run(std::wstring_view text, Client& client) {
    journal_.Command(text);
    const Command command = ParseCommand(text);
    const FaultPlan plan = faults_.For(command);
    Sleep(plan.delayMilliseconds);
    for (const RaisedEvent& event : plan.raises)
        events_.RaiseToAll(event);
    if (plan.death && !plan.death->done)
        onDie();
    Answer answer = plan.answer ? *plan.answer : Perform(command, plan, client);
    if (plan.death)
        onDie();
    if (!plan.answer)
        plan.Alter(answer.reply);
    switch (answer.kind) {
        case Answer::Kind::Reply:
            journal_.Reply(answer.reply);
            break;
        case Answer::Kind::Result:
            journal_.Failed(answer.result);
            break;
        case Answer::Kind::Exception:
            journal_.Failed(DISP_E_EXCEPTION);
            break;
    }
    return answer;
}

HRESULT CommandRouter::Listen() {
    Command advise;
    advise.call = adviseCall;
    const FaultPlan plan = faults_.For(advise);
    Sleep(plan.delayMilliseconds);
    return plan.answer ? plan.answer->result : S_OK;
}

Answer CommandRouter::Perform(const Command& command, const FaultPlan& plan, Client& client) {
    if (!command.error.empty())
        return Failure(command, command.error);
    CallContext context{options_, database_, desk_, areas_, client, plan};
    try {
        for (const Routine& routine : routines) {
            if (command.call == routine.call)
                return routine.run(context, command);
        }
    } catch (const DatabaseError& error) {
        return Failure(command, error.Message());
    }
    return Failure(command, L"Unknown command.");
}

}  // namespace practice
