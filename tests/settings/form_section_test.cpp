#include "settings/form_section.h"

#include "settings/form_label.h"
#include "settings/form_look.h"
#include "settings/form_row.h"
#include "tests/settings/user.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace amperly {
namespace {

class FormSectionTest : public testing::Test {
protected:
    FormRow* addRow(FormSection& section)
    {
        auto* const row = new FormRow(nullptr, nullptr);
        section.addRow(row);
        return row;
    }

    static int height(FormSection& section)
    {
        section.show();
        QApplication::processEvents(); // in which layouts take notice
        return section.sizeHint().height();
    }

    /// How many hairlines cross the middle of the section.
    int hairlines(FormSection& section)
    {
        section.resize(380, height(section));
        const QImage picture = pictureOf(section);
        const QRgb hairline = FormColors::of(section.palette()).separator.rgb();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            count += picture.pixel(picture.width() / 2, y) == hairline ? 1 : 0;
        return count;
    }
};

TEST_F(FormSectionTest, ItsTitleIsItsSpokenNameSeenOrNot)
{
    const FormSection seen(QStringLiteral("Readings"));
    EXPECT_EQ(seen.accessibleName(), QStringLiteral("Readings"));
    ASSERT_NE(seen.findChild<QLabel*>(), nullptr);
    EXPECT_EQ(seen.findChild<QLabel*>()->text(), QStringLiteral("Readings"));
    const FormSection spoken(QStringLiteral("Preview"), FormSection::Header::Spoken);
    EXPECT_EQ(spoken.accessibleName(), QStringLiteral("Preview"));
    EXPECT_EQ(spoken.findChild<QLabel*>(), nullptr);
}

TEST_F(FormSectionTest, HairlinesLieBetweenRowsOnly)
{
    FormSection section(QStringLiteral("Readings"), FormSection::Header::Spoken);
    addRow(section);
    EXPECT_EQ(hairlines(section), 0);
    addRow(section);
    addRow(section);
    EXPECT_EQ(hairlines(section), 2);
}

TEST_F(FormSectionTest, AHiddenRowHasNeitherPlaceNorHairline)
{
    FormSection section(QStringLiteral("General"), FormSection::Header::Spoken);
    addRow(section);
    const int one = height(section);
    FormRow* const row = addRow(section);
    EXPECT_GT(height(section), one);
    row->hide();
    EXPECT_EQ(height(section), one);
    EXPECT_EQ(hairlines(section), 0);
}

TEST_F(FormSectionTest, AFooterIsWrappedToTheSectionsWidth)
{
    FormSection section(QStringLiteral("Preview"), FormSection::Header::Spoken);
    addRow(section);
    section.setFooter(
        QStringLiteral("one word and another, and so on, until there is no more room in the line, "
                       "so that a second one is needed for what is left of it"));
    section.show();
    QApplication::processEvents();
    const QLabel& footer = *section.findChild<QLabel*>();
    EXPECT_GE(footer.heightForWidth(380), 2 * footer.fontMetrics().height() + kForm.footerGap);
    EXPECT_LT(section.heightForWidth(760), section.heightForWidth(380));
}

} // namespace
} // namespace amperly
