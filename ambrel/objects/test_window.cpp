#include "ambrel/objects/test_window.h"

#include "frame/com/bstr.h"

namespace ambrel::testing_objects {

using morvane::ComPtr;

ComPtr<IAmbrel> openTestWindow()
{
    ComPtr<IVexRes> resources;
    ComPtr<IDispatch> made;
    if (FAILED(AmbrelCreateRes(resources.put())) ||
        FAILED(resources->CreateAmbrel(morvane::Bstr(L"Test").get(), 0, made.put())))
        return nullptr;
    const ComPtr<IAmbrel> root = made.as<IAmbrel>();
    VARIANT_BOOL created = VARIANT_FALSE;
    if (root)
        root->Create(0, {100, 100, 500, 400}, &created);
    return root;
}

} // namespace ambrel::testing_objects
