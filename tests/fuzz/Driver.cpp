// Runs a fuzz target where there is no libFuzzer: over every file of its corpus, then over
// mutations of these files, the same ones for the same seed.
//   <target> <corpus folder> <mutations> [seed]
// An input that stops the target is left as <target>.find in the current folder.

#include <sanitizer/common_interface_defs.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// What ends in abort() is a find like any other.
extern "C" const char* __asan_default_options() {
    return "handle_abort=1";
}

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string findPath;
Bytes current;

void KeepFind() {
    std::ofstream(findPath, std::ios::binary)
        .write(reinterpret_cast<const char*>(current.data()),
               static_cast<std::streamsize>(current.size()));
    std::fprintf(stderr, "the input is in %s\n", findPath.c_str());
}

void Run(Bytes input) {
    current = std::move(input);
    // A copy of just its size, so that reading behind it is seen.
    const Bytes exact(current);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

std::vector<Bytes> ReadCorpus(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Bytes> corpus;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return corpus;
}

// The standard's distributions may differ between libraries; the engine does not.
class Mutator {
public:
    Mutator(const std::vector<Bytes>& corpus, std::uint64_t seed)
        : corpus_(corpus), engine_(seed) {}

    Bytes Next() {
        Bytes input = AnyInput();
        for (std::size_t changes = 1 + Below(6); changes > 0; --changes)
            Change(input);
        return input;
    }

private:
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }
    const Bytes& AnyInput() { return corpus_[Below(corpus_.size())]; }

    void Change(Bytes& input) {
        constexpr std::size_t longest = 4096;
        const std::size_t at = Below(input.size() + 1);
        const auto place = input.begin() + static_cast<std::ptrdiff_t>(at);
        const std::size_t length = std::min(1 + Below(16), input.size() - at);
        switch (Below(5)) {
            case 0:
                if (length > 0)
                    *place = static_cast<std::uint8_t>(*place ^ 1U << Below(8));
                break;
            case 1:
                input.insert(place, static_cast<std::uint8_t>(Below(256)));
                break;
            case 2:
                input.erase(place, place + static_cast<std::ptrdiff_t>(length));
                break;
            case 3: {
                const Bytes piece(place, place + static_cast<std::ptrdiff_t>(length));
                if (input.size() < longest)
                    input.insert(place, piece.begin(), piece.end());
                break;
            }
            default: {
                // A piece of another input.
                const Bytes& other = AnyInput();
                const std::size_t from = Below(other.size() + 1);
                const std::size_t taken = std::min(1 + Below(32), other.size() - from);
                const auto begin = other.begin() + static_cast<std::ptrdiff_t>(from);
                if (input.size() < longest)
                    input.insert(place, begin, begin + static_cast<std::ptrdiff_t>(taken));
            }
        }
    }

    const std::vector<Bytes>& corpus_;
    std::mt19937_64 engine_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s <corpus folder> <mutations> [seed]\n", argv[0]);
        return 2;
    }
    findPath = std::filesystem::path(argv[0]).filename().string() + ".find";
    __sanitizer_set_death_callback(&KeepFind);
    LLVMFuzzerInitialize(&argc, &argv);

    const std::vector<Bytes> corpus = ReadCorpus(argv[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "no corpus in %s\n", argv[1]);
        return 2;
    }
    for (const Bytes& input : corpus)
        Run(input);
    const std::uint64_t mutations = std::strtoull(argv[2], nullptr, 10);
    Mutator mutator(corpus, argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1);
    for (std::uint64_t run = 0; run < mutations; ++run)
        Run(mutator.Next());
    std::printf("%zu files, %llu mutations\n", corpus.size(),
                static_cast<unsigned long long>(mutations));
    return 0;
}
