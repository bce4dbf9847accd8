#pragma once

#include <functional>
#include <memory>
#include <string>

#include "util/ProgramInfo.h"

namespace corvane {

class Clock;
class CrashLine;
class FileSystem;
class FormView;
class GoldMine;
class HtmlDocument;
class IniFiles;
class MessageBoxes;
class Processes;
class Registry;
class Shell;
class XPathReader;

// What the program meets outside of itself, by its seams. All of it outlives the program.
struct Surroundings {
    ProgramInfo info;
    std::wstring commandLine;  // the text behind the program's own path
    GoldMine& goldMine;
    const XPathReader& xpath;
    Registry& registry;
    IniFiles& iniFiles;
    FileSystem& files;
    Processes& processes;
    Shell& shell;
    Clock& clock;
    CrashLine& crashLine;
    MessageBoxes& boxes;
    std::function<std::unique_ptr<HtmlDocument>()> newHtmlDocument;
    FormView& view;
};

}  // namespace corvane
