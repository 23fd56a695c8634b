/* Where the methods that the tests stand in for lie in their interfaces' tables, as the interface compiler orders them. */
#define COBJMACROS
#include <windows.h>

#include "host/idl/host.h"

#include <stddef.h>

#define SLOT(interface, method) (offsetof(interface##Vtbl, method) / sizeof(void*))

const size_t kSlotCount = sizeof(IVexControlBaseVtbl) / sizeof(void*);
const size_t kSlotPropChangedNotify = SLOT(IVexControlBase, PropChangedNotify);
const size_t kSlotImageGetWidth = SLOT(IVexImageBase, GetWidth);
const size_t kPropertySlots = sizeof(IVexPropBaseVtbl) / sizeof(void*);
const size_t kSlotImageGetHeight = SLOT(IVexImageBase, GetHeight);
const size_t kSlotImageGetRect = SLOT(IVexImageBase, get_rect);
const size_t kSlotImagePutRect = SLOT(IVexImageBase, put_rect);
const size_t kSlotImageRenderDraw = SLOT(IVexImageBase, RenderDraw);
const size_t kSlotFillGetStart = SLOT(IFillColor, get_clrStart);
const size_t kSlotFillPutStart = SLOT(IFillColor, put_clrStart);
const size_t kSlotFillRenderDraw = SLOT(IFillColor, RenderDraw);
const size_t kSlotDcFillSolidColor = SLOT(IVexRenderDC, FillSolidColor);
const size_t kSlotStyleRenderDrawText = SLOT(IVexTextStyle, RenderDrawText);
const size_t kSlotDcDrawLine = SLOT(IVexRenderDC, DrawLine);
const size_t kSlotObjGetName = SLOT(IVexImageBase, GetName);
const size_t kSlotResGetObject = SLOT(IVexRes, GetResObject);
