#pragma once

#include "seams/Conversions.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"

namespace corvane {

// The number in a text box. A text that does not convert raises error 13, one that does not fit
// error 6, each with the box's name before the description.
[[nodiscard]] inline std::int32_t LongIn(const TextBox& box) {
    return NamedProcedure(box.name(), [&] { return LongFromText(box.text()); });
}
[[nodiscard]] inline std::int64_t LongLongIn(const TextBox& box) {
    return NamedProcedure(box.name(), [&] { return LongLongFromText(box.text()); });
}

}  // namespace corvane
