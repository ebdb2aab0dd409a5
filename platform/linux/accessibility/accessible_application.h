// The program as assistive technology finds it, with every window that can be seen. The toolkit
// leaves popups out, since most belong to a menu of a window; here the panel itself is one.
#pragma once

#include <QAccessibleObject>

namespace amperly {

class AccessibleApplication : public QAccessibleApplication {
public:
    /// From now on the application object is found as one of these.
    static void install();

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
};

} // namespace amperly
