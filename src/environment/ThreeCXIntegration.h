#pragma once

#include <string>

namespace corvane {

class FileSystem;
class Form;
class MessageBoxes;
class Registry;
class Shell;
class StatusWriter;
struct ProgramInfo;

// Reads how GoldMine, 3CX and this program are wired together, shows it on the Paths and Registry
// pages, and warns where the wiring is broken. Nothing here stops the program.
class ThreeCXIntegration {
public:
    ThreeCXIntegration(Form& form, const ProgramInfo& program, Registry& registry,
                       const FileSystem& files, const Shell& shell, StatusWriter& status,
                       MessageBoxes& boxes);

    enum class Generation { None, MyPhone10Or11, Phone14OrLater };

    Generation Discover();

    // Whether 3CX's CallNotifierPath names this program, or EchoParams.cmd beside it: the support
    // staff's stand-in that shows what 3CX passes.
    [[nodiscard]] bool IsCalledBy(const std::wstring& crmCallNotifier) const;

    // cmdChangeLogLevel: switches the log level of the Command Line API plug-in. What is read
    // back is shown, so a write that did not take shows the old level.
    void ChangeLogLevel();

private:
    void ShowProgramLocation();
    void ShowGoldMineFolder();
    [[nodiscard]] Generation DiscoverGeneration();
    void ShowPlugin(const std::wstring& phoneFolder);
    void ShowPluginLog();
    void ShowNoPlugin();
    void CheckCrmCallNotifier();
    void CheckOutboundNotifier(Generation generation);

    // A local-machine value; the default also when the key may not be opened or created.
    [[nodiscard]] std::wstring Read(const std::wstring& subkey, const std::wstring& section,
                                    const std::wstring& value, const std::wstring& defaultText);

    Form& form_;
    const ProgramInfo& program_;
    Registry& registry_;
    const FileSystem& files_;
    const Shell& shell_;
    StatusWriter& status_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
