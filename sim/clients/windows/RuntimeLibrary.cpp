#include "sim/clients/windows/RuntimeLibrary.h"

#include <windows.h>

namespace {

constexpr DWORD kLongestPath = 32768;

/// No boxes of Windows' own while an object of this class lives; the caller has its own words.
class QuietErrors
{
public:
    QuietErrors()
    {
        SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &m_before);
    }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;
    ~QuietErrors() { SetThreadErrorMode(m_before, nullptr); }

private:
    DWORD m_before = 0;
};

/// Empty for bytes that aren't UTF-8.
std::wstring wideText(const std::string& utf8)
{
    const int bytes = static_cast<int>(utf8.size());
    const int length =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, wide.data(), length);
    return wide;
}

std::string utf8Text(const std::wstring& wide)
{
    const int units = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

std::filesystem::path programFolder()
{
    std::wstring file(kLongestPath, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), kLongestPath));
    return std::filesystem::path(file).parent_path();
}

std::filesystem::path systemFolder()
{
    std::wstring folder(kLongestPath, L'\0');
    const UINT length = GetSystemDirectoryW(folder.data(), kLongestPath);
    folder.resize(length < kLongestPath ? length : 0);
    return folder;
}

bool isFile(const std::filesystem::path& file)
{
    const DWORD attributes = GetFileAttributesW(file.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string quoted(const std::filesystem::path& path)
{
    return '"' + utf8Text(path.native()) + '"';
}

/// What is wrong with a library that exists, empty if nothing is.
std::string faultOf(const RuntimeLibrary& library)
{
    constexpr const char* kWidth = sizeof(void*) == 8 ? "64" : "32";
    if (library) {
        return library.missing().empty() ? "" : "lacks the function " + library.missing();
    }
    if (library.errorCode() == ERROR_BAD_EXE_FORMAT) {
        return std::string("is no ") + kWidth + "-bit library";
    }
    return "can't be loaded (Windows error " + std::to_string(library.errorCode()) + ')';
}

} // namespace

RuntimeLibrary::RuntimeLibrary(const std::filesystem::path& file)
{
    const QuietErrors quiet;
    m_module.reset(
        LoadLibraryExW(file.c_str(), nullptr,
                       LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    m_errorCode = m_module == nullptr ? GetLastError() : 0;
}

void RuntimeLibrary::Free::operator()(void* module) const
{
    FreeLibrary(static_cast<HMODULE>(module));
}

void* RuntimeLibrary::address(const char* name)
{
    const FARPROC found = GetProcAddress(static_cast<HMODULE>(m_module.get()), name);
    if (found == nullptr && m_missing.empty()) {
        m_missing = name;
    }
    return reinterpret_cast<void*>(found);
}

LibrarySearch::LibrarySearch(const char* fileName, const std::string& simulatorFolder,
                             const wchar_t* kitFolder)
    : m_fileName(fileName)
{
    const std::filesystem::path simulator(wideText(simulatorFolder));
    for (const std::filesystem::path& folder :
         {programFolder(), simulator, simulator / kitFolder, systemFolder()})
    {
        if (folder.is_absolute()) {
            // Windows loads no library by a path with forward slashes.
            m_folders.push_back(std::filesystem::path(folder).make_preferred());
        }
    }
}

std::string LibrarySearch::places() const
{
    std::string text;
    for (std::size_t i = 0; i < m_folders.size(); ++i) {
        const bool last = i + 1 == m_folders.size();
        text += i == 0 ? "" : (last ? " and " : ", ");
        text += quoted(m_folders[i]);
    }
    return text;
}

RuntimeLibrary LibrarySearch::load(const std::function<void(RuntimeLibrary&)>& bind,
                                   std::string& problem) const
{
    std::string fault;
    for (const std::filesystem::path& folder : m_folders) {
        const std::filesystem::path file = folder / m_fileName;
        if (!isFile(file)) {
            continue;
        }
        RuntimeLibrary library(file);
        if (library) {
            bind(library);
        }
        const std::string found = faultOf(library);
        if (found.empty()) {
            return library;
        }
        // The first place is the one that somebody chose on purpose.
        fault = fault.empty() ? quoted(file) + ' ' + found : fault;
    }
    problem = fault.empty() ? '"' + std::string(m_fileName) + "\" wasn't found in " + places()
                                  + "; copy it into one of these folders."
                            : fault + "; no usable one was found in " + places() + '.';
    return {};
}
