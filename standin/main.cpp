#include <windows.h>

#include <commctrl.h>
#include <objbase.h>
#include <string>

#include "commands/CommandRouter.h"
#include "data/Database.h"
#include "data/DatabaseTools.h"
#include "data/IniFiles.h"
#include "dialing/Dialer.h"
#include "events/EventRaiser.h"
#include "faults/Faults.h"
#include "server/AutomationServer.h"
#include "server/Registration.h"
#include "server/TypeLibrary.h"
#include "shared/Handles.h"
#include "shared/Journal.h"
#include "shared/Options.h"
#include "windows/Desk.h"

namespace {

using namespace practice;

constexpr int misused = 2;

class ComApartment {
public:
    ComApartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (entered_)
            CoUninitialize();
    }

private:
    bool entered_;
};

// A box tells the user; a hidden run must not wait for one.
void Complain(const Options& options, const std::wstring& message) {
    if (!options.hidden)
        MessageBoxW(nullptr, message.c_str(), L"Practice GoldMine", MB_ICONEXCLAMATION);
}

KernelHandle TellReady(const Options& options) {
    if (options.readyEvent.empty())
        return {};
    KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, options.readyEvent.c_str()));
    SetEvent(event.get());
    return event;
}

std::wstring JournalFile(const Options& options) {
    return options.dataFolder + L"journal.txt";
}

int DialOnce(const Options& options) {
    Journal journal(JournalFile(options), false);
    const std::wstring problem = Dialer(options, journal).Dial(options.dial);
    if (!problem.empty()) {
        Complain(options, problem);
        return 1;
    }
    return 0;
}

int Register(const Options& options) {
    const HRESULT outcome = RegisterServer();
    if (outcome == HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS))
        Complain(options, L"A GoldMine is registered here; its clients keep it.");
    return SUCCEEDED(outcome) ? 0 : 1;
}

int Serve(const Options& options) {
    CreateDirectoryW(options.dataFolder.c_str(), nullptr);
    Journal journal(JournalFile(options), options.fresh);
    journal.Note(L"gmw started");
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    try {
        Database database(DatabaseFile(options), options.fresh);
        if (options.fresh && !options.noIni)
            WriteMissingIniFiles(options);
        TypeLibrary types;
        HRESULT outcome = ReadTypeLibrary(types);
        Faults faults(options.dataFolder + L"faults.txt", journal);
        EventRaiser events;
        Dialer dialer(options, journal);
        Desk desk(options, database, events, dialer);
        CommandRouter router(options, database, desk, faults, journal, events);
        AutomationServer server(types, router, events, journal);
        router.onDie = [&] {
            // Wine would go on sending new clients to a class of a dead process.
            server.Revoke();
            TerminateProcess(GetCurrentProcess(), 1);
        };
        desk.Open();
        if (SUCCEEDED(outcome))
            outcome = server.Open();
        if (FAILED(outcome)) {
            journal.Note(L"clients cannot connect: " + HexadecimalText(outcome));
            Complain(options, L"Clients cannot connect: " + HexadecimalText(outcome));
            return 1;
        }
        journal.Note(L"clients can connect");
        const KernelHandle ready = TellReady(options);
        desk.Run();
    } catch (const DatabaseError& error) {
        journal.Note(L"database error: " + error.Message());
        Complain(options, error.Message());
        return 1;
    }
    journal.Note(L"gmw ended");
    return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    const Options options = ParseOptions(ProcessArguments());
    if (!options.unknown.empty()) {
        Complain(options, L"Option not understood: " + options.unknown.front());
        return misused;
    }
    const ComApartment apartment;
    if (options.registerServer)
        return Register(options);
    if (options.unregisterServer)
        return SUCCEEDED(UnregisterServer()) ? 0 : 1;
    if (options.dump || !options.sql.empty())
        return RunDatabaseTool(options);
    if (!options.dial.empty())
        return DialOnce(options);
    return Serve(options);
}
