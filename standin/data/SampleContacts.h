#pragma once

#include <string>

namespace practice {

// The table definitions and the sample contacts (contacts.sql, UTF-8), as built into the program.
std::string SampleContacts();

}  // namespace practice
