#pragma once

#include <functional>

#include "util/ProgramInfo.h"

namespace corvane {

class Clock;
class FileSystem;
class GoldMine;
class IniFiles;
class Processes;
class Registry;
class Shell;
class Survey;
class XPathReader;

// What a check looks at, by its seams.
struct CheckSurroundings {
    ProgramInfo program;      // CorvaneTo3CX.exe, which stands beside this program
    Registry& registry;       // as CorvaneTo3CX.exe sees it
    Registry& otherRegistry;  // as programs of the other word length see it
    const IniFiles& iniFiles;
    const FileSystem& files;
    Processes& processes;
    const Shell& shell;
    Clock& clock;
    const Survey& survey;
    GoldMine& goldMine;
    const XPathReader& xpath;
};

// Makes surroundings for the calling thread alone and runs a body on them. It may be called on
// several threads at once.
using InSurroundings =
    std::function<void(const std::function<void(const CheckSurroundings&)>& body)>;

}  // namespace corvane
