/* Included before the generated proxies: delegation to a base interface's proxy needs these from the RPC library, and
   our interface compiler's run-time header does not declare them. */
#pragma once

#include <objbase.h>

HRESULT CALLBACK IUnknown_QueryInterface_Proxy(IUnknown* self, REFIID iid, void** result);
ULONG CALLBACK IUnknown_AddRef_Proxy(IUnknown* self);
ULONG CALLBACK IUnknown_Release_Proxy(IUnknown* self);
