#include "util/ErrorReport.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string>

#include "seams/MessageBoxes.h"
#include "seams/StatusWriter.h"
#include "util/Text.h"

namespace corvane {

namespace {

// The text needs no memory that is not there.
void ShowOutOfMemory(MessageBoxes& boxes) noexcept {
    try {
        boxes.Notify(L"Run-time error '7':\r\n\r\nOut of memory", BoxIcon::Critical);
    } catch (...) {
        // Nothing is left that could be said.
    }
}

}  // namespace

void ErrorReport::Report(const RuntimeError& error) {
    try {
        WriteLine(error);
    } catch (...) {
        // The box comes even where no line can be written.
    }
    if (!error.reported)
        boxes_.Notify(RuntimeErrorText(error), BoxIcon::Critical);
}

void ErrorReport::WriteLine(const RuntimeError& error) {
    std::wstring line = ReplaceAll(RuntimeErrorText(error), lineBreak, L" ");
    // GoldMine's own descriptions may break lines in other ways.
    std::replace_if(
        line.begin(), line.end(), [](wchar_t each) { return each == L'\r' || each == L'\n'; },
        L' ');
    status_.WriteStatus(line, LogMode::Forced);
}

RuntimeError ErrorReport::CurrentError() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return MakeRuntimeError(ErrorNumber::OutOfMemory);
    } catch (const std::exception& exception) {
        RuntimeError error = MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
        for (const char* each = exception.what(); *each; ++each)
            error.source += static_cast<wchar_t>(static_cast<unsigned char>(*each));
        return error;
    }
}

void ErrorReport::ShowCurrentError(MessageBoxes& boxes) noexcept {
    try {
        boxes.Notify(RuntimeErrorText(CurrentError()), BoxIcon::Critical);
    } catch (...) {
        ShowOutOfMemory(boxes);
    }
}

void ErrorReport::ReportCurrentException() noexcept {
    try {
        Report(CurrentError());
    } catch (...) {
        ShowOutOfMemory(boxes_);
    }
}

}  // namespace corvane
