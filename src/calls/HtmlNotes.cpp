#include "calls/HtmlNotes.h"

#include "seams/Clock.h"
#include "seams/StatusWriter.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

constexpr int mostWaitsForDocument = 11;
constexpr std::uint32_t documentWaitMilliseconds = 1000;

// The base of object errors plus 514.
constexpr std::int64_t timeOutError = 0x80040202;

}  // namespace

std::wstring HtmlNotes::PrependHTMLToBody(const std::wstring& existing,
                                          const std::wstring& fragment) {
    constexpr std::wstring_view procedureName = L"PrependHTMLToBody";
    return NamedProcedure(procedureName, [&] {
        const auto document = newDocument_();
        document->InsertAtStartOfBody(existing, fragment);
        int waits = 0;
        while (!document->Complete() && waits < mostWaitsForDocument) {
            clock_.Sleep(documentWaitMilliseconds);
            clock_.PumpEvents();
            ++waits;
        }
        if (waits == mostWaitsForDocument) {
            RuntimeError error;
            error.number = timeOutError;
            error.source = Join(programName_, L".frmCorvaneTo3CX.", procedureName);
            error.description =
                L"Timed out after 10 seconds trying to insert HTML string before existing HTML "
                L"Body.";
            status_.WriteStatus(error.description);
            throw error;
        }
        return document->Serialise();
    });
}

std::wstring HtmlNotes::HTMLToText(const std::wstring& html) {
    return NamedProcedure(L"HTMLToText", [&] { return newDocument_()->VisibleText(html); });
}

}  // namespace corvane
