#include "check/report/ReportParts.h"

#include <algorithm>
#include <utility>

#include "check/SavedSettings.h"
#include "check/Survey.h"
#include "check/Talk.h"
#include "environment/GoldMineProcess.h"
#include "environment/ThreeCXIntegration.h"
#include "settings/cSimuIniFile.h"
#include "settings/SettingsCatalogue.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring WindowsVersion(Registry& registry) {
    cSimuIniFile store(registry);
    store.Scope = 2;
    store.Subkey = L"SOFTWARE\\Microsoft\\Windows NT";
    store.RootSpec = L"CurrentVersion";
    std::wstring text;
    try {
        for (const wchar_t* value : {L"ProductName", L"DisplayVersion", L"CSDVersion"})
            text += Join(store.ReadProfileString(value, L""), L" ");
        text += Join(L"build ", store.ReadProfileString(L"CurrentBuild", L"unknown"));
    } catch (const RuntimeError&) {
        // As the program has it, nothing is known of what may not be read.
    }
    return ReplaceAll(ReplaceAll(text, L"  ", L" "), L"  ", L" ");
}

}  // namespace

std::vector<SavedSetting> SavedSettings(const CheckSurroundings& around) {
    Form form;
    const std::vector<UnfitSetting> unfit = LoadSavedSettings(form, around.registry);
    cSimuIniFile store = OwnSettingsStore(around.registry);
    std::vector<SavedSetting> settings;
    const auto add = [&](const Control& option) {
        // One that is missing reads as whatever stands in for it.
        constexpr const wchar_t* other = L"<none>";
        SavedSetting setting{option.name(), store.ReadProfileString(option.name(), L""),
                             option.tag(), L""};
        if (setting.saved->empty() && store.ReadProfileString(option.name(), other) == other)
            setting.saved.reset();
        const auto found = std::ranges::find(unfit, setting.name, &UnfitSetting::name);
        if (found != unfit.end())
            setting.note = found->converts ? L"is out of range" : L"does not convert";
        settings.push_back(std::move(setting));
    };
    for (const std::size_t row : savedOptions)
        add(*form.controls()[row]);
    add(form.chkWriteLog);
    return settings;
}

std::vector<Version> Versions(const CheckSurroundings& around) {
    Form form;
    Talk talk;
    ThreeCXIntegration threeCX(form, around.program, around.registry, around.files, around.shell,
                               talk, talk);
    threeCX.Discover();
    GoldMineProcess goldMine(form, around.processes, talk, talk);
    const bool running = goldMine.FindGoldMineExecutable();

    std::vector<Version> versions{{L"CorvaneCheck", around.program.VersionText()}};
    const auto add = [&](std::wstring_view what, const std::wstring& file) {
        const std::wstring version =
            file.empty() ? std::wstring() : around.survey.FileVersion(file);
        const bool hasPlace = file.find(L'\\') != std::wstring::npos;
        versions.push_back({what, version.empty() ? std::wstring(L"unknown") : version,
                            hasPlace ? file : std::wstring()});
    };
    add(L"CorvaneTo3CX", around.program.ExecutablePath());
    if (running)
        add(L"GoldMine", form.GoldMineExePath);
    else
        versions.push_back({L"GoldMine", L"does not run here"});
    add(L"3CX call trigger", form.txt3CXOutboundCallNotifierPath.text());
    add(L"3CX plug-in", form.txtCommandLineAPIPluginDLLPath.text());
    versions.push_back({L"Windows", WindowsVersion(around.registry)});
    add(L"OLE Automation", L"oleaut32.dll");
    add(L"MSXML 6", L"msxml6.dll");
    add(L"MSXML 3", L"msxml3.dll");
    add(L"HTML engine", L"mshtml.dll");
    return versions;
}

}  // namespace corvane
