#pragma once

#include <string>
#include <vector>

#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane::test {

// The last line of every run.
inline const std::wstring programFinished = L"Finished unloading form and closing program.";

// The lines of the status box.
inline std::vector<std::wstring> StatusLines(const Form& form) {
    return Split(ReplaceAll(form.txtStatus.text(), L"\r\n", L"\n"), L'\n');
}

}  // namespace corvane::test
