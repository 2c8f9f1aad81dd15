#pragma once

// A control that holds something drawn for one scale (a rendered picture, a font size in
// pixels) and makes it again when the layout's scale changes. ReferenceLayout calls it for
// every such control of a screen it lays out anew, before placing it.
class IRescalable {
public:
    virtual ~IRescalable() = default;
    // `from` and `to` are TivUtils scales; TivUtils::GetScale() already returns `to`.
    virtual void OnRescaled(double from, double to) = 0;
};
