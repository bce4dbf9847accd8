#include "app/ErrorReport.h"

#include <exception>
#include <new>

#include "ui/MessageBoxes.h"
#include "util/StatusWriter.h"
#include "util/Text.h"

namespace corvane {

void ErrorReport::Report(const RuntimeError& error) {
    WriteLine(error);
    boxes_.Notify(RuntimeErrorText(error), BoxIcon::Critical);
}

void ErrorReport::WriteLine(const RuntimeError& error) {
    status_.WriteStatus(ReplaceAll(RuntimeErrorText(error), lineBreak, L" "), LogMode::Forced);
}

void ErrorReport::ReportCurrentException() noexcept {
    try {
        try {
            throw;
        } catch (const RuntimeError& error) {
            Report(error);
        } catch (const std::bad_alloc&) {
            Report(MakeRuntimeError(ErrorNumber::OutOfMemory));
        } catch (const std::exception& exception) {
            RuntimeError error = MakeRuntimeError(ErrorNumber::InvalidProcedureCall);
            for (const char* each = exception.what(); *each; ++each) {
                error.source += static_cast<wchar_t>(static_cast<unsigned char>(*each));
            }
            Report(error);
        }
    } catch (...) {
        // Nothing is left that could be said: reporting itself failed.
    }
}

}  // namespace corvane
