// A registry of the test's own in place of the system's, for tests of registration and of what it makes possible.
#pragma once

#include "host/windows_headers.h"

namespace morvane::testing {

/// While it lives, HKEY_CLASSES_ROOT of this process is an empty key of the test's own.
class ClassesRootStandIn {
public:
    ClassesRootStandIn()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
        RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key, nullptr);
        status = RegOverridePredefKey(HKEY_CLASSES_ROOT, m_key);
    }
    ClassesRootStandIn(const ClassesRootStandIn&) = delete;
    ClassesRootStandIn& operator=(const ClassesRootStandIn&) = delete;
    ~ClassesRootStandIn()
    {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(m_key);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
    }

    LSTATUS status = ERROR_SUCCESS;

private:
    static constexpr const wchar_t* kPath = L"Software\\MorvaneRegistrationTest";
    HKEY m_key = nullptr;
};

} // namespace morvane::testing
