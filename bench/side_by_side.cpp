// Times commands side by side: they take turns, so that what else the machine does falls on all of
// them alike.
//   side_by_side <rounds> <warm-up rounds>     reads the commands from standard input
//
// Each line of the input is a name, a tabulator and the words of a command with tabulators between
// them. A round starts each once and waits for its end. Prints a line for each: its name, the
// median and the quartiles of its wall time in milliseconds, and the median of its peak memory in
// KiB, with tabulators between them. A command that fails ends all with exit code 1.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Contestant {
    std::string name;
    std::vector<std::string> words;
    std::vector<double> milliseconds;
    std::vector<double> kibibytes;
};

std::vector<Contestant> ReadContestants(std::istream& input) {
    std::vector<Contestant> contestants;
    for (std::string line; std::getline(input, line);) {
        std::istringstream fields(line);
        Contestant contestant;
        std::getline(fields, contestant.name, '\t');
        for (std::string word; std::getline(fields, word, '\t');)
            contestant.words.push_back(word);
        if (contestant.words.empty()) {
            std::cerr << "no command: " << line << '\n';
            std::exit(2);
        }
        contestants.push_back(contestant);
    }
    return contestants;
}

// Whether the command ran and ended well; what it took is added when it counts.
bool Run(Contestant& contestant, bool counts) {
    std::vector<char*> arguments;
    for (std::string& word : contestant.words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t silent;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    const auto begin = std::chrono::steady_clock::now();
    pid_t process = 0;
    const int refused =
        posix_spawnp(&process, arguments[0], &silent, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&silent);
    int status = 0;
    rusage usage{};
    if (refused != 0 || wait4(process, &status, 0, &usage) != process || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        std::cerr << contestant.name << " failed: status " << status << '\n';
        return false;
    }
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - begin;
    if (counts) {
        contestant.milliseconds.push_back(taken.count());
        contestant.kibibytes.push_back(static_cast<double>(usage.ru_maxrss));
    }
    return true;
}

// The value below which a part of them lies.
double Quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double place = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    return values[below] + (place - static_cast<double>(below)) * (values[above] - values[below]);
}

}  // namespace

int main(int count, char** arguments) {
    const int rounds = count == 3 ? std::atoi(arguments[1]) : 0;
    const int warmUp = count == 3 ? std::atoi(arguments[2]) : 0;
    if (rounds < 1 || warmUp < 0) {
        std::cerr << "usage: side_by_side <rounds> <warm-up rounds>\n";
        return 2;
    }
    std::vector<Contestant> contestants = ReadContestants(std::cin);
    for (int round = -warmUp; round < rounds; ++round) {
        for (Contestant& contestant : contestants) {
            if (!Run(contestant, round >= 0))
                return 1;
        }
    }
    for (const Contestant& contestant : contestants) {
        std::printf("%s\t%.2f\t%.2f\t%.2f\t%.0f\n", contestant.name.c_str(),
                    Quantile(contestant.milliseconds, 0.5), Quantile(contestant.milliseconds, 0.25),
                    Quantile(contestant.milliseconds, 0.75), Quantile(contestant.kibibytes, 0.5));
    }
    return 0;
}
