// The console program that tells how GoldMine, 3CX and CorvaneTo3CX are linked. CorvaneTo3CX takes
// whatever is no switch for a number to dial, so its command line has no room for this.

#include <span>
#include <string>
#include <vector>

#include "check/Commands.h"
#include "check/Output.h"
#include "check/platform/ConsoleOutput.h"
#include "platform/kit/SystemLibraries.h"

namespace {

using namespace corvane;

std::vector<CheckCommand> Commands() {
    return {};
}

}  // namespace

int wmain(int count, wchar_t** texts) {
    LoadFromSystemFolderOnly();
    const std::span<wchar_t*> all(texts, static_cast<std::size_t>(count));
    const std::vector<std::wstring> arguments(all.begin() + (all.empty() ? 0 : 1), all.end());
    ConsoleOutput output;
    return RunCommand(Commands(), arguments, output);
}
