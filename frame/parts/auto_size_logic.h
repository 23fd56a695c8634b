// How large a control becomes that fits itself to its text.
#pragma once

#include "base/geometry.h"

#include <optional>

namespace morvane {

struct AutoSizeLimits {
    int minWidth = 0; // all in pixels
    int maxWidth = 0;
    int minHeight = 0;
    int maxHeight = 0; // 0: no limit
};

/// Measures the control's text, wrapped inside the given size where the text style wraps. Nothing when measuring
/// failed.
class TextMeasure {
public:
    virtual std::optional<Size> measure(Size within) = 0;

protected:
    ~TextMeasure() = default;
};

struct AutoSizeRequest {
    Size current; // of the control now
    AutoSizeLimits limits;
    bool widthIsFixed = false; // the position keeps a width of its own, so that the text may change it
    bool storesWidth = true;   // false where the position derives the width from both edges
    int storedHeight = 0;      // the position's present vertical size
    int textLength = 0;        // characters; 0 gives the minimum size
    bool hasTextStyle = true;
    int besideText = 0; // what stands beside the text: graphic, box, margins
};

struct AutoSizeResult {
    int height;
    std::optional<int> width; // only where the position stores one

    friend bool operator==(const AutoSizeResult&, const AutoSizeResult&) = default;
};

/// The sizes to store in the position; nothing where it stays as it is or the text cannot be measured.
std::optional<AutoSizeResult> autoSize(const AutoSizeRequest& request, TextMeasure& text);

} // namespace morvane
