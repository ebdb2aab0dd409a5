#include "settings/mnemonic.h"

#include <QVariant>
#include <QWidget>

namespace amperly {

namespace {

constexpr const char* kShown = "mnemonicsShown";

} // namespace

QString withoutMnemonic(const QString& title)
{
    QString plain = title;
    if (const qsizetype mark = plain.indexOf(u'&'); mark >= 0)
        plain.remove(mark, 1);
    return plain;
}

void showMnemonics(QWidget& window, bool shown)
{
    if (window.property(kShown).toBool() == shown)
        return;
    window.setProperty(kShown, shown);
    window.update();
    for (QWidget* const each : window.findChildren<QWidget*>())
        each->update();
}

int mnemonicFlag(const QWidget& widget)
{
    return widget.window()->property(kShown).toBool() ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
}

} // namespace amperly
