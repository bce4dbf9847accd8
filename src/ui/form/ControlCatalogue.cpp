#include "ui/form/ControlCatalogue.h"

namespace corvane {

const ControlSpec& SpecOf(std::size_t row) {
    return controlCatalogue[row];
}

std::size_t RowOfControl(std::wstring_view name, int index) {
    return FindControl(name, index);
}

}  // namespace corvane
