#pragma once

#include <algorithm>
#include <array>
#include <utility>

#include "ui/form/ControlCatalogue.h"

namespace corvane {

namespace catalogue_detail {

// The rows of the options that have a place in that order; the places count up from 1, one each.
template <int Kept::*order>
consteval auto OptionsInOrder() {
    constexpr auto count = static_cast<std::size_t>(std::ranges::count_if(
        controlCatalogue, [](const ControlSpec& row) { return row.kept.*order > 0; }));
    std::array<std::size_t, count> rows;
    rows.fill(noControl);
    for (std::size_t row = 0; row < controlCount; ++row) {
        const int place = controlCatalogue[row].kept.*order;
        if (place == 0)
            continue;
        if (std::exchange(rows.at(static_cast<std::size_t>(place - 1)), row) != noControl)
            throw "two options have one place";
    }
    return rows;
}

}  // namespace catalogue_detail

// Rows of the catalogue. An entry's name is its control's name; kind, default and caption stand
// with the control. chkWriteLog is not among the saved ones: the log loads it before all others, so
// that the lines of loading are already logged as configured, and it is stored behind them.
inline constexpr auto savedOptions = catalogue_detail::OptionsInOrder<&Kept::saved>();

// The options that Restore Defaults sets. The master switch is left as it is.
inline constexpr auto restoredOptions = catalogue_detail::OptionsInOrder<&Kept::restored>();

}  // namespace corvane
