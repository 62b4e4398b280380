#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A library loaded while the program runs, freed with the object. It stays on one thread.
class RuntimeLibrary
{
public:
    RuntimeLibrary() = default;
    /// `file`: whole path; what the library itself needs is looked for beside it, beside the
    /// program and in the system. Empty object and errorCode() on failure.
    explicit RuntimeLibrary(const std::filesystem::path& file);

    explicit operator bool() const { return m_module != nullptr; }
    /// Windows' code of a failed load, 0 none.
    unsigned long errorCode() const { return m_errorCode; }

    /// Sets `target`, a pointer to a function or to data, to what is exported as `name`; null where
    /// there is none.
    template <typename Pointer>
    void bind(const char* name, Pointer& target)
    {
        target = reinterpret_cast<Pointer>(address(name));
    }
    /// The first name that bind() didn't find, empty if all were found.
    const std::string& missing() const { return m_missing; }

private:
    struct Free
    {
        void operator()(void* module) const;
    };

    void* address(const char* name);

    std::unique_ptr<void, Free> m_module;
    unsigned long m_errorCode = 0;
    std::string m_missing;
};

/// The folders in which a simulator's client library may stand: the program's, the simulator's and
/// the system's. Neither the current folder nor those of PATH are among them, since anybody might
/// have put a file of that name there.
class LibrarySearch
{
public:
    /// `simulatorFolder`: UTF-8, with any slashes; left out if it is empty or not absolute.
    /// `kitFolder`: where the simulator's development kit has the library, below that folder.
    LibrarySearch(const char* fileName, const std::string& simulatorFolder,
                  const wchar_t* kitFolder);

    /// The first library that loads and has everything that `bind` asks it for. Empty, with one
    /// sentence for the user in `problem` (UTF-8), when there is none.
    RuntimeLibrary load(const std::function<void(RuntimeLibrary&)>& bind,
                        std::string& problem) const;

private:
    std::string places() const;

    const char* m_fileName;
    std::vector<std::filesystem::path> m_folders;
};
