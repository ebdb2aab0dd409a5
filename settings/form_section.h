// A section of the form: a header, a card of rows with hairlines between them, and a footer. To
// screen readers it is a group.
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace amperly {

class FormSection : public QWidget {
public:
    enum class Header { Shown, Spoken };

    /// A spoken title is not to be seen.
    explicit FormSection(const QString& title, Header header = Header::Shown);

    /// Adds a row below the others. A hidden row takes no place and has no hairline.
    void addRow(QWidget* row);

    /// To be called once, after the rows.
    void setFooter(const QString& text);

private:
    class Card;

    Card* m_card;
    QVBoxLayout* m_layout;
};

} // namespace amperly
