// The system's view behind a widget of the toolkit.
#pragma once

#import <AppKit/AppKit.h>

#include <QWidget>

#include <functional>

namespace amperly {

/// Whatever tells the view of a widget.
using ViewOf = std::function<NSView*(QWidget&)>;

/// The view of the widget's window, which becomes a native one if it was none.
[[nodiscard]] inline NSView* nativeView(QWidget& widget)
{
    return (__bridge NSView*)reinterpret_cast<void*>(widget.window()->winId());
}

} // namespace amperly
