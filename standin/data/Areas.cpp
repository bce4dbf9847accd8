#include "data/Areas.h"

#include <utility>

namespace practice {

std::wstring Areas::OpenTable(const std::wstring& table) {
    Area area;
    area.table = table;
    return Add(std::move(area));
}

std::wstring Areas::OpenQuery(Table result) {
    Area area;
    area.result = std::move(result);
    return Add(std::move(area));
}

Area* Areas::FindTable(const std::wstring& handle) {
    Area* area = Find(handle);
    return area && !area->table.empty() ? area : nullptr;
}

Area* Areas::FindQuery(const std::wstring& handle) {
    Area* area = Find(handle);
    return area && area->table.empty() ? area : nullptr;
}

void Areas::Close(const std::wstring& handle) {
    areas_.erase(handle);
}

std::wstring Areas::Add(Area area) {
    std::wstring handle = std::to_wstring(++last_);
    areas_.emplace(handle, std::move(area));
    return handle;
}

Area* Areas::Find(const std::wstring& handle) {
    const auto found = areas_.find(handle);
    return found == areas_.end() ? nullptr : &found->second;
}

}  // namespace practice
