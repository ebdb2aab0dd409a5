#include "flow/spoken_text.h"

#include <QAccessibleWidget>

namespace amperly {

namespace {

QAccessibleInterface* spokenTextAccessible(const QString&, QObject* object)
{
    auto* const text = dynamic_cast<SpokenText*>(object);
    return text == nullptr ? nullptr : new QAccessibleWidget(text, QAccessible::StaticText);
}

} // namespace

SpokenText::SpokenText(QWidget* parent) : QWidget(parent)
{
    QAccessible::installFactory(spokenTextAccessible); // the same one again changes nothing
    setFocusPolicy(Qt::NoFocus);
}

void SpokenText::say(const QString& words)
{
    if (words != accessibleName())
        setAccessibleName(words); // tells assistive technology by itself
}

} // namespace amperly
