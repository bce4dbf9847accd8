#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>

namespace end_to_end {

// Throws outside Wine: the tests would delete what 3CX, GoldMine and the program itself have stored
// on somebody's computer.
void RefuseOutsideWine(HMODULE ntdll = GetModuleHandleW(L"ntdll.dll"));

// Clears a registry key for its lifetime and puts back afterwards what stood in it. What a test
// that was killed has left is put back before. Only in Wine.
class ClearedKey {
public:
    ClearedKey(HKEY root, std::wstring path);
    ClearedKey(const ClearedKey&) = delete;
    ClearedKey& operator=(const ClearedKey&) = delete;
    ~ClearedKey();

    // Deletes the key and all below.
    void Clear();

private:
    void BackUp() const;
    // Puts back what a backup that was finished holds, and forgets it.
    void Restore();

    HKEY root_;
    std::wstring path_;
    std::wstring backup_;
};

// Nobody may do this to the key for its lifetime, whoever he is: KEY_SET_VALUE, say.
class DeniedAccess {
public:
    DeniedAccess(HKEY root, std::wstring path, REGSAM access);
    DeniedAccess(const DeniedAccess&) = delete;
    DeniedAccess& operator=(const DeniedAccess&) = delete;
    ~DeniedAccess();

private:
    HKEY root_;
    std::wstring path_;
};

// A value as it stands in the registry, whatever it means.
void SetRegistryBytes(HKEY root, const std::wstring& path, const std::string& name, DWORD type,
                      const std::string& bytes);
// Text values of one key, UTF-8.
void SetRegistryText(HKEY root, const std::wstring& path, const std::string& name,
                     const std::string& text);
// The same of a key of the machine.
void SetMachine(const std::wstring& path, const std::string& name, const std::string& text);
std::optional<std::string> RegistryText(HKEY root, const std::wstring& path,
                                        const std::string& name);
bool RegistryKeyExists(HKEY root, const std::wstring& path);
// Names and texts of all values; a value that is no text reads "<type N>".
std::map<std::string, std::string> RegistryValues(HKEY root, const std::wstring& path);

}  // namespace end_to_end
