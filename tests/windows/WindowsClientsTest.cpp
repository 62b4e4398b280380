#include "tests/windows/WindowsCheck.h"

/// Prints what fails; the exit status is the number of failures.
int main()
{
    try {
        testLibrarySearch();
        testSimConnectCalls();
        testFsuipcCalls();
    } catch (const std::exception& error) {
        windows_check::checkTrue(error.what(), false);
    }
    std::cout << windows_check::g_checks << " checks, " << windows_check::g_failures << " failed\n";
    return windows_check::g_failures;
}
