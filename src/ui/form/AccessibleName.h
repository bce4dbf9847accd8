#pragma once

#include <string>

#include "ui/form/ControlCatalogue.h"

namespace corvane {

// What a screen reader has to be told about the control of this row of the catalogue because
// neither its own caption nor a label before it says it. Empty when they do.
[[nodiscard]] std::wstring AccessibleName(std::size_t row);

}  // namespace corvane
