#include "environment/ThreeCXIntegration.h"

#include "seams/FileSystem.h"
#include "seams/MessageBoxes.h"
#include "seams/Shell.h"
#include "seams/StatusWriter.h"
#include "settings/cSimuIniFile.h"
#include "ui/form/Form.h"
#include "util/ProgramInfo.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr const wchar_t* subkey3CX = L"SOFTWARE\\3CX";
constexpr const wchar_t* logLevelValue = L"CommandLineAPILogLevel";
constexpr std::wstring_view importantEvents = L"ImportantEvents";
constexpr std::wstring_view allEvents = L"AllEvents";

constexpr std::wstring_view outboundCaption =
    L"CorvaneTo3CX calls this program to dial out via 3CX:";
constexpr std::wstring_view pluginCaption = L"3CX uses this plugin to call CorvaneTo3CX.exe:";
constexpr std::wstring_view logLevelCaption = L"3CX Command Line API Plugin log level:";
constexpr std::wstring_view logPathCaption = L"Path to 3CX Command Line API Plugin log file:";
constexpr std::wstring_view pluginOf14 = L"(the plugin belongs to 3CX 14 and later)";

void Fill(TextBox& box, std::wstring_view text) {
    box.setText(text);
    box.setTooltip(text);
}

void Describe(Control& label, std::wstring_view what, std::wstring_view place) {
    label.setCaption(Join(what, lineBreak, place));
}

std::wstring LogLevelCaption(std::wstring_view level) {
    return level == importantEvents ? Join(L"Set to log ", allEvents)
                                    : Join(L"Set to log only ", importantEvents);
}

cSimuIniFile LocalMachineStore(Registry& registry, const std::wstring& subkey,
                               const std::wstring& section) {
    cSimuIniFile store(registry);
    store.Scope = 2;
    store.Subkey = subkey;
    store.RootSpec = section;
    return store;
}

}  // namespace

ThreeCXIntegration::ThreeCXIntegration(Form& form, const ProgramInfo& program, Registry& registry,
                                       const FileSystem& files, const Shell& shell,
                                       StatusWriter& status, MessageBoxes& boxes)
    : form_(form),
      program_(program),
      registry_(registry),
      files_(files),
      shell_(shell),
      status_(status),
      boxes_(boxes) {}

ThreeCXIntegration::Generation ThreeCXIntegration::Discover() {
    ShowProgramLocation();
    ShowGoldMineFolder();
    const Generation generation = DiscoverGeneration();
    if (generation == Generation::None) {
        boxes_.Notify(
            L"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop Components "
            L"before running Corvane to 3CX.");
        return generation;
    }
    CheckCrmCallNotifier();
    CheckOutboundNotifier(generation);
    return generation;
}

bool ThreeCXIntegration::IsCalledBy(const std::wstring& crmCallNotifier) const {
    return crmCallNotifier == form_.txtAppPath.text() ||
           crmCallNotifier == Join(program_.folder, L"\\EchoParams.cmd");
}

void ThreeCXIntegration::ShowProgramLocation() {
    Fill(form_.txtAppPath, program_.ExecutablePath());
    if (program_.folder.find(L' ') == std::wstring::npos)
        return;
    boxes_.Notify(Join(L"The path to this program:", lineBreak, lineBreak, program_.folder,
                       lineBreak, lineBreak,
                       L"contains one or more spaces, which GoldMine does not support. Please "
                       L"move '",
                       program_.executableName, L".exe' to a folder without spaces in the path."));
}

void ThreeCXIntegration::ShowGoldMineFolder() {
    const std::wstring folder =
        Read(L"SOFTWARE\\FrontRange Solutions", L"GoldMine", L"InstallDir", L"");
    Fill(form_.txtGMInstallDir,
         folder.empty()
             ? std::wstring_view(L"Unknown - probably not running or not installed locally")
             : std::wstring_view(folder));
}

ThreeCXIntegration::Generation ThreeCXIntegration::DiscoverGeneration() {
    Control& outboundLabel = form_.lblParam(ParamLabel::outboundCallNotifier);
    const std::wstring myPhone = Read(subkey3CX, L"MyPhone", L"CallNotifier", L"");
    if (!myPhone.empty()) {
        form_.lbl3CXInfo.setCaption(L"3CX MyPhone defined in registry. Assuming 3CX 10 or 11.");
        Fill(form_.txt3CXOutboundCallNotifierPath, myPhone);
        Describe(outboundLabel, outboundCaption, L"HKLM\\Software\\3CX\\MyPhone\\CallNotifier");
        ShowNoPlugin();
        return Generation::MyPhone10Or11;
    }
    const std::wstring phoneFolder = Read(subkey3CX, L"3CXPhone for Windows", L"Path", L"");
    if (!phoneFolder.empty()) {
        form_.lbl3CXInfo.setCaption(L"3CXPhone defined in registry. Assuming 3CX 14 or later.");
        // The registry's folder ends in a backslash.
        Fill(form_.txt3CXOutboundCallNotifierPath, phoneFolder + L"CallTriggerCmd.exe");
        Describe(outboundLabel, outboundCaption,
                 L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CallTriggerCmd.exe");
        ShowPlugin(phoneFolder);
        ShowPluginLog();
        return Generation::Phone14OrLater;
    }
    ShowNoPlugin();
    return Generation::None;
}

void ThreeCXIntegration::ShowPlugin(const std::wstring& phoneFolder) {
    const std::wstring plugin = phoneFolder + L"CommandLineAPIPlugin.dll";
    Fill(form_.txtCommandLineAPIPluginDLLPath, plugin);
    if (!files_.FileExists(plugin)) {
        boxes_.Notify(Join(L"The 3CX Command Line API Plugin (", plugin,
                           L") could not be found. Please re-install Corvane to 3CX."));
    }
    Describe(form_.lblParam(ParamLabel::plugin), pluginCaption,
             L"HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CommandLineAPIPlugin.dll");
}

void ThreeCXIntegration::ShowPluginLog() {
    const std::wstring level(
        TrimBlanks(Read(subkey3CX, L"CRM", logLevelValue, std::wstring(importantEvents))));
    Fill(form_.txtCommandLineAPILogLevel, level);
    Describe(form_.lblParam(ParamLabel::pluginLogLevel), logLevelCaption,
             L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogLevel");
    form_.cmdChangeLogLevel.setCaption(LogLevelCaption(level));

    const std::wstring defaultFolder =
        AddTrailingBackslash(shell_.FolderPath(SpecialFolder::RoamingAppData)) +
        L"3CXCommandLineAPIPlugin\\Logs\\";
    std::wstring folder(
        TrimBlanks(Read(subkey3CX, L"CRM", L"CommandLineAPILogPath", defaultFolder)));
    if (folder.empty())
        folder = defaultFolder;
    Fill(form_.txtCommandLineAPILogPath,
         AddTrailingBackslash(folder) + L"3CXCommandLineAPIPlugin.log");
    Describe(form_.lblParam(ParamLabel::pluginLogPath), logPathCaption,
             L"HKLM\\Software\\3CX\\CRM\\CommandLineAPILogPath");
}

void ThreeCXIntegration::ShowNoPlugin() {
    form_.cmdChangeLogLevel.setEnabled(false);
    form_.cmdOpenPluginLog.setEnabled(false);
    Fill(form_.txtCommandLineAPIPluginDLLPath, L"");
    Fill(form_.txtCommandLineAPILogLevel, L"");
    Fill(form_.txtCommandLineAPILogPath, L"");
    Describe(form_.lblParam(ParamLabel::plugin), pluginCaption, pluginOf14);
    Describe(form_.lblParam(ParamLabel::pluginLogLevel), logLevelCaption, pluginOf14);
    Describe(form_.lblParam(ParamLabel::pluginLogPath), logPathCaption, pluginOf14);
}

void ThreeCXIntegration::CheckCrmCallNotifier() {
    const std::wstring notifier = Read(subkey3CX, L"CRM", L"CallNotifierPath", L"");
    if (notifier.empty()) {
        boxes_.Notify(
            L"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to 3CX.");
        return;
    }
    Fill(form_.txt3CXCRMCallNotifierPath, notifier);
    Describe(form_.lblParam(ParamLabel::crmCallNotifier),
             L"3CX calls this program to handle inbound and outbound call events:",
             L"HKLM\\Software\\3CX\\CRM\\CallNotifierPath");
    if (IsCalledBy(notifier))
        return;
    boxes_.Notify(
        Join(L"The 3CX CRM Call Notifier is pointing to:", lineBreak, L"  ", Quoted(notifier),
             lineBreak, L"instead of to the current instance of Corvane to 3CX:", lineBreak, L"  ",
             Quoted(form_.txtAppPath.text()), lineBreak, L"Please re-install Corvane to 3CX."));
}

void ThreeCXIntegration::CheckOutboundNotifier(Generation generation) {
    const std::wstring& path = form_.txt3CXOutboundCallNotifierPath.text();
    if (files_.FileExists(path))
        return;
    if (generation == Generation::Phone14OrLater) {
        boxes_.Notify(Join(L"The 3CXPhone Outbound Call Notifier program (", path,
                           L") could not be found. Please re-install 3CXPhone for Windows."));
    } else {
        boxes_.Notify(
            Join(L"The 3CX MyPhone Outbound Call Notifier program (", path,
                 L") could not be found. Please re-install the 3CX MyPhone Desktop Components."));
    }
}

void ThreeCXIntegration::ChangeLogLevel() {
    const bool wasImportant = TrimBlanks(form_.txtCommandLineAPILogLevel.text()) == importantEvents;
    const std::wstring_view newLevel = wasImportant ? allEvents : importantEvents;
    form_.cmdChangeLogLevel.setCaption(LogLevelCaption(newLevel));
    try {
        LocalMachineStore(registry_, subkey3CX, L"CRM")
            .WriteProfileString(logLevelValue, std::wstring(newLevel));
    } catch (const RuntimeError& error) {
        // A plain user may not write here: what is read back below shows that it did not take.
        status_.WriteStatus(Join(L"Could not change 3CX Command Line API Plugin log level: ",
                                 TrimBlanks(ReplaceAll(error.description, lineBreak, L" "))));
    }
    Fill(form_.txtCommandLineAPILogLevel, Read(subkey3CX, L"CRM", logLevelValue, L""));
    form_.SetFocus(form_.txtCommandLineAPILogLevel);
    boxes_.Notify(
        L"Please exit and re-start 3CXPhone to complete changing the 3CX Command Line API Plugin "
        L"log level.");
}

std::wstring ThreeCXIntegration::Read(const std::wstring& subkey, const std::wstring& section,
                                      const std::wstring& value, const std::wstring& defaultText) {
    try {
        return LocalMachineStore(registry_, subkey, section).ReadProfileString(value, defaultText);
    } catch (const RuntimeError&) {
        // Reading creates a missing key, which a plain user may not do under the local machine.
        return defaultText;
    }
}

}  // namespace corvane
