#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fakes/FakeFormView.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeRegistry.h"
#include "fakes/FakeStatusWriter.h"
#include "settings/OptionText.h"
#include "settings/Settings.h"
#include "ui/form/EnablingRules.h"
#include "ui/form/Form.h"

namespace corvane::test {

// A form, and its options over a registry in memory.
class OptionsTest : public testing::Test {
protected:
    [[nodiscard]] std::wstring Shown(const std::wstring& name) const {
        return OptionText(form.control(name));
    }
    void Set(const std::wstring& name, const std::wstring& text) {
        SetOptionFromText(form.control(name), text);
    }
    void Store(const std::wstring& name, const std::wstring& text) {
        registry.Store(FakeRegistry::ownKey, name, text);
    }
    [[nodiscard]] std::optional<std::wstring> Stored(const std::wstring& name) const {
        return registry.Stored(FakeRegistry::ownKey, name);
    }
    // A form as a user has it before him: options loaded, GoldMine's version known.
    void LoadAsForUser() {
        settings.LoadSettings();
        form.GoldMineVersionOK = true;
        RunAllEnablingRules(form);
    }

    FakeRegistry registry;
    FakeStatusWriter status;
    FakeMessageBoxes boxes;
    FakeFormView view;
    Form form{&view};
    Settings settings{form, registry, status, boxes};
};

}  // namespace corvane::test
