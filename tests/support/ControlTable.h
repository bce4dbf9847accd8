#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace test_support {

// The ids of the main window's controls by their names, as the build writes them into controls.tsv.
inline std::map<std::string, int> ReadControlIds(const std::filesystem::path& table) {
    std::map<std::string, int> ids;
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        const size_t tab = line.find('\t');
        // The heading names no id.
        if (const int id = std::atoi(line.c_str() + tab + 1); id > 0)
            ids[line.substr(0, tab)] = id;
    }
    return ids;
}

}  // namespace test_support
