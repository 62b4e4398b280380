#pragma once

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <windows.h>

/// What the tests of the Windows forms share. Plain C++, so that the driver program needs nothing
/// but Windows.
namespace windows_check {

inline int g_checks = 0;
inline int g_failures = 0;

template <typename Value>
void checkEqual(const char* what, const Value& actual, const Value& expected)
{
    ++g_checks;
    if (!(actual == expected)) {
        ++g_failures;
        std::cout << "FAILED " << what << "\n  expected " << expected << "\n  but got  " << actual
                  << '\n';
    }
}

inline void checkEqual(const char* what, const std::string& actual, const char* expected)
{
    checkEqual(what, actual, std::string(expected));
}

inline void checkTrue(const char* what, bool holds)
{
    checkEqual(what, holds, true);
}

inline std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

inline std::filesystem::path programFolder()
{
    wchar_t file[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, file, MAX_PATH);
    return std::filesystem::path(file).parent_path();
}

/// Folder of the stand-ins, `form` "full" or "lacking".
inline std::filesystem::path standIns(const char* form)
{
    return programFolder() / form;
}

/// A function that a loaded stand-in exports for the tests; null when none is loaded.
template <typename Function>
Function standInFunction(const wchar_t* library, const char* name)
{
    const HMODULE module = GetModuleHandleW(library);
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(module == nullptr ? nullptr : GetProcAddress(module, name)));
}

} // namespace windows_check

void testLibrarySearch();
void testSimConnectCalls();
void testFsuipcCalls();
