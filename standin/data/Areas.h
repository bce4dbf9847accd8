#pragma once

#include <map>
#include <optional>
#include <string>

#include "data/Database.h"

namespace practice {

// An open table, or the result of a data-stream query.
struct Area {
    std::wstring table;       // "" for a query result
    std::wstring recordId;    // where a table's cursor stands; "" for nowhere
    Table result;             // of the query
    std::size_t fetched = 0;  // rows of it already given
};

// The open areas by their handles, which are texts of whole numbers from 1.
class Areas {
public:
    std::wstring OpenTable(const std::wstring& table);
    std::wstring OpenQuery(Table result);
    // nullptr when there is no such area of that kind.
    Area* FindTable(const std::wstring& handle);
    Area* FindQuery(const std::wstring& handle);
    void Close(const std::wstring& handle);

private:
    std::wstring Add(Area area);
    Area* Find(const std::wstring& handle);

    std::map<std::wstring, Area> areas_;
    unsigned long last_ = 0;
};

}  // namespace practice
