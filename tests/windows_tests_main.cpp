// Runs every test that needs COM and Win32, against the real Morvane.dll and Ambrel.dll beside this program.
#include "host/windows_headers.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
