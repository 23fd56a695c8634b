// Any bytes as a zip archive: what unpacks must pack again into the same files.
#include "ambrel/skin/container.h"
#include "fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ambrel::skin;
    const auto files = readZip({data, size});
    if (!files)
        return 0;
    for (const auto& [name, bytes] : files->all())
        checkFileName(name);
    const auto again = readZip(writeZip(files.value()));
    fuzz::require(again.ok() && again.value() == files.value(), "a written archive reads back equal");
    return 0;
}
