// The byte layout of every record that crosses the interfaces, checked while compiling: saved data and compiled
// clients address the fields by offset.
#include "host/host.h"
#include "host/typed_properties.h"

#include <cstddef>

static_assert(sizeof(SkinRect) == 16);
static_assert(offsetof(SkinRect, left) == 0);
static_assert(offsetof(SkinRect, top) == 4);
static_assert(offsetof(SkinRect, right) == 8);
static_assert(offsetof(SkinRect, bottom) == 12);

static_assert(sizeof(SkinImageSection) == 72);
static_assert(offsetof(SkinImageSection, szImageName) == 0);
static_assert(offsetof(SkinImageSection, rect) == 8);
static_assert(offsetof(SkinImageSection, nTopHeight) == 24);
static_assert(offsetof(SkinImageSection, nBottomHeight) == 28);
static_assert(offsetof(SkinImageSection, nLeftWidth) == 32);
static_assert(offsetof(SkinImageSection, nRightWidth) == 36);
static_assert(offsetof(SkinImageSection, bLeftEdgeStretch) == 40);
static_assert(offsetof(SkinImageSection, bRightEdgeStretch) == 42);
static_assert(offsetof(SkinImageSection, bTopEdgeStretch) == 44);
static_assert(offsetof(SkinImageSection, bBottomEdgeStretch) == 46);
static_assert(offsetof(SkinImageSection, bClientAreaStretch) == 48);
static_assert(offsetof(SkinImageSection, clrTrans) == 52);
static_assert(offsetof(SkinImageSection, bTrans) == 56);
static_assert(offsetof(SkinImageSection, nOpacity) == 58);
static_assert(offsetof(SkinImageSection, clrColorize) == 60);
static_assert(offsetof(SkinImageSection, bSupportPerPixel) == 64);
static_assert(offsetof(SkinImageSection, bDestroyImage) == 66);

static_assert(sizeof(VEXLOGFONT) == 56);
static_assert(offsetof(VEXLOGFONT, lfHeight) == 0);
static_assert(offsetof(VEXLOGFONT, lfWidth) == 4);
static_assert(offsetof(VEXLOGFONT, lfEscapement) == 8);
static_assert(offsetof(VEXLOGFONT, lfOrientation) == 12);
static_assert(offsetof(VEXLOGFONT, lfWeight) == 16);
static_assert(offsetof(VEXLOGFONT, lfItalic) == 20);
static_assert(offsetof(VEXLOGFONT, lfUnderline) == 22);
static_assert(offsetof(VEXLOGFONT, lfStrikeOut) == 24);
static_assert(offsetof(VEXLOGFONT, lfCharSet) == 26);
static_assert(offsetof(VEXLOGFONT, lfOutPrecision) == 28);
static_assert(offsetof(VEXLOGFONT, lfClipPrecision) == 30);
static_assert(offsetof(VEXLOGFONT, lfQuality) == 32);
static_assert(offsetof(VEXLOGFONT, lfPitchAndFamily) == 34);
static_assert(offsetof(VEXLOGFONT, lfFaceName) == 40);
static_assert(offsetof(VEXLOGFONT, lfAntiAlisaing) == 48);

static_assert(sizeof(SkinSize) == 8);
static_assert(offsetof(SkinSize, cx) == 0);
static_assert(offsetof(SkinSize, cy) == 4);

static_assert(sizeof(VEX_DRAGINFO) == 80);
static_assert(offsetof(VEX_DRAGINFO, pFromObj) == 0);
static_assert(offsetof(VEX_DRAGINFO, pToObj) == 8);
static_assert(offsetof(VEX_DRAGINFO, hBitmap) == 16);
static_assert(offsetof(VEX_DRAGINFO, hData1) == 24);
static_assert(offsetof(VEX_DRAGINFO, hData2) == 32);
static_assert(offsetof(VEX_DRAGINFO, hData3) == 40);
static_assert(offsetof(VEX_DRAGINFO, hWnd) == 48);
static_assert(offsetof(VEX_DRAGINFO, pUserData) == 56);
static_assert(offsetof(VEX_DRAGINFO, hTargetItem) == 64);
static_assert(offsetof(VEX_DRAGINFO, bNeedNewHWND) == 72);
static_assert(offsetof(VEX_DRAGINFO, eDragMode) == 76);

static_assert(sizeof(VEX_USERDATA) == 16);
static_assert(offsetof(VEX_USERDATA, lType) == 0);
static_assert(offsetof(VEX_USERDATA, hUserData) == 8);

static_assert(sizeof(VEX_COLORCASE) == 40);
static_assert(offsetof(VEX_COLORCASE, bEnabled) == 0);
static_assert(offsetof(VEX_COLORCASE, nType) == 2);
static_assert(offsetof(VEX_COLORCASE, clrCase) == 4);
static_assert(offsetof(VEX_COLORCASE, nHue) == 8);
static_assert(offsetof(VEX_COLORCASE, nSat) == 9);
static_assert(offsetof(VEX_COLORCASE, fBlend) == 12);
static_assert(offsetof(VEX_COLORCASE, strName) == 16);
static_assert(offsetof(VEX_COLORCASE, strText) == 24);
static_assert(offsetof(VEX_COLORCASE, strFile) == 32);

static_assert(sizeof(VexPosition) == 40);
static_assert(offsetof(VexPosition, horzPos) == 0);
static_assert(offsetof(VexPosition, vertPos) == 20);

static_assert(sizeof(PosBase) == 20);
static_assert(offsetof(PosBase, nAlignType) == 0);
static_assert(offsetof(PosBase, nSpaceType) == 4);
static_assert(offsetof(PosBase, nLeft_Top) == 8);
static_assert(offsetof(PosBase, nRight_Bottom) == 12);
static_assert(offsetof(PosBase, nWidth_Height) == 16);

static_assert(sizeof(VexNotify) == 56);
static_assert(offsetof(VexNotify, eVexMsgId) == 0);
static_assert(offsetof(VexNotify, eWinMsgId) == 4);
static_assert(offsetof(VexNotify, lParam1) == 8);
static_assert(offsetof(VexNotify, lParam2) == 16);
static_assert(offsetof(VexNotify, lParam3) == 24);
static_assert(offsetof(VexNotify, lParam4) == 32);
static_assert(offsetof(VexNotify, lParam5) == 40);
static_assert(offsetof(VexNotify, bChildren) == 48);

static_assert(sizeof(TestStruct) == 72);
static_assert(offsetof(TestStruct, strName) == 0);
static_assert(offsetof(TestStruct, bSupport) == 8);
static_assert(offsetof(TestStruct, clrTrans) == 12);
static_assert(offsetof(TestStruct, pImageBase) == 16);
static_assert(offsetof(TestStruct, vexPos) == 24);
static_assert(offsetof(TestStruct, pDispatch) == 64);

static_assert(sizeof(PSLItem) == 64);
static_assert(offsetof(PSLItem, strName) == 0);
static_assert(offsetof(PSLItem, strText) == 8);
static_assert(offsetof(PSLItem, strShortcut) == 16);
static_assert(offsetof(PSLItem, hData) == 24);
static_assert(offsetof(PSLItem, nIndex) == 32);
static_assert(offsetof(PSLItem, pPrev) == 40);
static_assert(offsetof(PSLItem, pNext) == 48);
static_assert(offsetof(PSLItem, pDispatch) == 56);

static_assert(sizeof(VexLVNotifyInfo) == 48);
static_assert(offsetof(VexLVNotifyInfo, eVexLVMsgId) == 0);
static_assert(offsetof(VexLVNotifyInfo, lParam1) == 8);
static_assert(offsetof(VexLVNotifyInfo, lParam2) == 16);
static_assert(offsetof(VexLVNotifyInfo, lParam3) == 24);
static_assert(offsetof(VexLVNotifyInfo, lParam4) == 32);
static_assert(offsetof(VexLVNotifyInfo, lParam5) == 40);

static_assert(sizeof(VEXSCROLLINFO) == 28);
static_assert(offsetof(VEXSCROLLINFO, ulSize) == 0);
static_assert(offsetof(VEXSCROLLINFO, ulMask) == 4);
static_assert(offsetof(VEXSCROLLINFO, nMin) == 8);
static_assert(offsetof(VEXSCROLLINFO, nMax) == 12);
static_assert(offsetof(VEXSCROLLINFO, ulPage) == 16);
static_assert(offsetof(VEXSCROLLINFO, nPos) == 20);
static_assert(offsetof(VEXSCROLLINFO, nTrackPos) == 24);

static_assert(sizeof(VEXSCROLLBARINFO) == 60);
static_assert(offsetof(VEXSCROLLBARINFO, ulSize) == 0);
static_assert(offsetof(VEXSCROLLBARINFO, rcScrollBar) == 4);
static_assert(offsetof(VEXSCROLLBARINFO, dxyLineButton) == 20);
static_assert(offsetof(VEXSCROLLBARINFO, xyThumbTop) == 24);
static_assert(offsetof(VEXSCROLLBARINFO, xyThumbBottom) == 28);
static_assert(offsetof(VEXSCROLLBARINFO, reserved) == 32);
static_assert(offsetof(VEXSCROLLBARINFO, rgstate) == 36);

static_assert(sizeof(VEXLV_IDPAIR) == 8);
static_assert(offsetof(VEXLV_IDPAIR, nGroupID) == 0);
static_assert(offsetof(VEXLV_IDPAIR, nItemID) == 4);

static_assert(sizeof(VEX_CALENDARDATE) == 12);
static_assert(offsetof(VEX_CALENDARDATE, nYear) == 0);
static_assert(offsetof(VEX_CALENDARDATE, nMonth) == 4);
static_assert(offsetof(VEX_CALENDARDATE, nDate) == 8);

static_assert(sizeof(VexLCNotifyInfo) == 48);
static_assert(offsetof(VexLCNotifyInfo, eVexLCMsgId) == 0);
static_assert(offsetof(VexLCNotifyInfo, lParam1) == 8);
static_assert(offsetof(VexLCNotifyInfo, lParam2) == 16);
static_assert(offsetof(VexLCNotifyInfo, lParam3) == 24);
static_assert(offsetof(VexLCNotifyInfo, lParam4) == 32);
static_assert(offsetof(VexLCNotifyInfo, lParam5) == 40);
