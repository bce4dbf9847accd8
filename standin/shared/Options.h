#pragma once

#include <string>
#include <vector>

namespace practice {

// What the command line asks for. Names are case-insensitive and begin with "/" or "-"; a value
// follows a colon.
struct Options {
    std::wstring dataFolder;  // /Data, with trailing backslash; default: the program's own folder
    std::wstring user = L"MASTER";     // /User
    std::wstring version = L"2014.1";  // /Version
    std::wstring record;               // /Record: the account to open; "" means the first one
    std::wstring readyEvent;           // /ReadyEvent: set once clients can connect
    std::wstring sql;                  // /Sql: run this statement and end
    std::wstring outFile;              // /Out: where /Sql and /Dump write
    std::wstring dial;                 // /Dial: dial this number and end
    bool fresh = false;                // /Fresh
    bool noRecord = false;             // /NoRecord
    bool noIni = false;                // /NoIni
    bool hidden = false;               // /Hidden
    bool dump = false;                 // /Dump
    bool registerServer = false;       // /RegServer
    bool unregisterServer = false;     // /UnregServer

    std::vector<std::wstring> unknown;
};

// The arguments without the program's own path.
Options ParseOptions(const std::vector<std::wstring>& arguments);

// The arguments of this process.
std::vector<std::wstring> ProcessArguments();

// The full path of this program, and its folder with trailing backslash.
std::wstring ProgramPath();
std::wstring ProgramFolder();

}  // namespace practice
