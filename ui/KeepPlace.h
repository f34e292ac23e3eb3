#pragma once

#include <QWidget>

/// The widget's place stays empty while it is hidden, so that the form does not jump.
inline void KeepPlaceWhenHidden(QWidget& widget)
{
    auto policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}
