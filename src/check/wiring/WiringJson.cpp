#include "check/wiring/WiringJson.h"

#include "check/Json.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring_view JsonWordOf(LinkState state) {
    switch (state) {
        case LinkState::Ok:
            return L"ok";
        case LinkState::Warning:
            return L"warning";
        case LinkState::Broken:
            return L"broken";
        default:
            return L"not checked";
    }
}

}  // namespace

std::wstring WiringJson(std::span<const Findings::Told> findings) {
    std::wstring json =
        Join(L"{\n  \"result\": ", JsonText(JsonWordOf(WorstOf(findings))), L",\n  \"links\": [");
    std::wstring_view separator = L"\n";
    for (const auto& [link, finding] : findings) {
        json += Join(separator, L"    {\"link\": ", JsonText(link), L", \"state\": ",
                     JsonText(JsonWordOf(finding.state)), L", \"text\": ", JsonText(finding.text),
                     L", \"fix\": ", JsonText(finding.fix), L"}");
        separator = L",\n";
    }
    return json + L"\n  ]\n}\n";
}

}  // namespace corvane
