// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionEditTests.cpp - drives the edit box of examples/qt with keys, pointer and input method, without a screen.
#include "InsertDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QShortcut>
#include <QTest>
#include <QTextBlock>
#include <QToolTip>

#include <stdexcept>

namespace {

const Model model{
    {"wall", 240}, {"door_width", 885}, {"corner", mathexpr::Point{1200, 800, 0}}, {"h\u00f6ha", 2}, {"\U0001D465", 7}};

/// The formats of the field's text, one per code unit.
QList<QTextCharFormat> formatsOf(const ExpressionEdit& edit)
{
    QList<QTextCharFormat> formats(edit.text().size());
    for (const QTextLayout::FormatRange& range : edit.document()->firstBlock().layout()->formats())
        for (int at = range.start; at < range.start + range.length; ++at)
            formats[at].merge(range.format);
    return formats;
}

/// A letter per code unit: u if it is underlined.
QString underlinesOf(const ExpressionEdit& edit)
{
    QString marks;
    for (const QTextCharFormat& format : formatsOf(edit))
        marks += format.underlineStyle() == QTextCharFormat::WaveUnderline ? 'u' : '.';
    return marks;
}

/// The same: b if its background is highlighted.
QString litOf(const ExpressionEdit& edit)
{
    QString marks;
    for (const QTextCharFormat& format : formatsOf(edit))
        marks += format.background().style() == Qt::NoBrush ? '.' : 'b';
    return marks;
}

QString lineOfTip(const QLabel& tip)
{
    return QString(tip.text()).replace("<br>", "\n");
}

QStringList namesIn(const QTreeWidget& list)
{
    QStringList names;
    for (int row = 0; row < list.topLevelItemCount(); ++row)
        names += list.topLevelItem(row)->text(0);
    return names;
}

}

class ExpressionEditTests : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        dialog = std::make_unique<InsertDialog>(model);
        edit = dialog->width;
        list = edit->findChild<QTreeWidget*>();
        for (QLabel* label : edit->findChildren<QLabel*>())
            (label->isWindow() ? tip : valueLabel) = label;
        dialog->show();
        edit->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    }

    void cleanup() { dialog.reset(); }

    // ----- the text and its value ---------------------------------------------

    void shows_the_value_at_the_right()
    {
        QTest::keyClicks(edit, "2*wall+5");
        QCOMPARE(edit->value(), std::optional(mathexpr::Value(485)));
        QCOMPARE(valueLabel->text(), "= 485");
        QVERIFY(valueLabel->geometry().left() >= edit->viewport()->geometry().right());
        QCOMPARE(edit->problem(), QString());
        QVERIFY(valueLabel->pixmap().isNull());
    }

    void shows_a_point()
    {
        dialog->insertion->setText("corner+[1,2,3]");
        QCOMPARE(dialog->insertion->value(), std::optional(mathexpr::Value(mathexpr::Point{1201, 802, 3})));
    }

    void underlines_a_mistake_where_it_stands()
    {
        edit->setText("1+sine(30)");
        QCOMPARE(underlinesOf(*edit), "..uuuu....");
        QVERIFY2(edit->problem().startsWith("The text before ( is not a function"), qPrintable(edit->problem()));
        QVERIFY2(edit->problem().endsWith("Did you mean sin or sinh?"), qPrintable(edit->problem()));
        QVERIFY(!edit->value());
        QVERIFY(!valueLabel->pixmap().isNull());
        QCOMPARE(valueLabel->toolTip(), edit->problem());
    }

    void underlines_what_an_item_refuses()
    {
        edit->setText("2*ln(-1)");
        QVERIFY(!edit->problem().isEmpty());
        QVERIFY2(underlinesOf(*edit).contains('u'), qPrintable(underlinesOf(*edit)));
    }

    void underlines_a_value_of_another_kind()
    {
        edit->setText("corner");
        QCOMPARE(edit->problem(), "A number is needed here, not a point.");
        QCOMPARE(underlinesOf(*edit), "uuuuuu");
        dialog->insertion->setText("wall");
        QCOMPARE(dialog->insertion->problem(), "A point is needed here, such as [1,2,0].");
    }

    void leaves_an_unfinished_text_alone_while_it_is_typed()
    {
        QTest::keyClicks(edit, "2*(3+");
        QVERIFY(!edit->problem().isEmpty());
        QCOMPARE(underlinesOf(*edit), ".....");
        QVERIFY(valueLabel->pixmap().isNull());
        dialog->height->setFocus();
        QVERIFY(underlinesOf(*edit).contains('u'));
        QVERIFY(!valueLabel->pixmap().isNull());
    }

    void keeps_what_was_typed_valid_or_not()
    {
        QTest::keyClicks(edit, "2 *wall+");
        dialog->height->setFocus();
        QCOMPARE(edit->text(), "2 *wall+");
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(edit->text(), "2 *wall+");
    }

    void says_nothing_of_an_empty_text()
    {
        edit->setText("1");
        edit->setText("  ");
        QCOMPARE(edit->problem(), QString());
        QVERIFY(!edit->value());
        QVERIFY(valueLabel->pixmap().isNull());
        QCOMPARE(valueLabel->text(), QString());
    }

    void computes_anew_when_the_model_has_changed()
    {
        double scale = 2;
        mathexpr::Options options;
        options.resolver = [&scale](std::string_view) { return std::optional<mathexpr::Value>(scale); };
        edit->setModel(options);
        edit->setText("scale*10");
        QCOMPARE(valueLabel->text(), "= 20");
        scale = 3;
        edit->refresh();
        QCOMPARE(valueLabel->text(), "= 30");
    }

    void forgets_an_assignment()
    {
        edit->setText("a=5");
        QCOMPARE(valueLabel->text(), "= 5");
        edit->setText("a+1");
        QVERIFY(!edit->value());
    }

    void tells_its_host_of_each_change_once()
    {
        int count = 0;
        connect(edit, &ExpressionEdit::edited, [&count] { ++count; });
        QTest::keyClicks(edit, "12");
        QTest::keyClick(edit, Qt::Key_Left);
        QCOMPARE(count, 2);
    }

    // ----- one line ------------------------------------------------------------

    void pastes_several_lines_as_one()
    {
        QGuiApplication::clipboard()->setText("1+\r\n2\t+3\u20284\n");
        edit->paste();
        QCOMPARE(edit->text(), "1+ 2 +3 4 ");
        QCOMPARE(edit->blockCount(), 1);
        QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(edit->text(), QString());
    }

    void takes_no_line_from_a_key()
    {
        for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier})
        {
            edit->setText("1");
            QTest::keyClick(edit, Qt::Key_Enter, modifier);
            QCOMPARE(edit->text(), "1");
        }
    }

    void takes_no_line_from_an_input_method()
    {
        QInputMethodEvent event;
        event.setCommitString("1\n+2");
        QApplication::sendEvent(edit, &event);
        QCOMPARE(edit->text(), "1 +2");
    }

    void has_the_height_of_one_line()
    {
        const int height = edit->height();
        QVERIFY(height >= edit->fontMetrics().height());
        QVERIFY(height < 3 * edit->fontMetrics().height());
        QFont font = edit->font();
        font.setPointSizeF(2 * font.pointSizeF());
        edit->setFont(font);
        QVERIFY(edit->height() > height);
        edit->setText("1");
        QVERIFY(edit->viewport()->height() >= edit->cursorRect().height());
        QCOMPARE(edit->verticalScrollBar()->maximum(), 0);
    }

    void scrolls_a_long_text_with_the_cursor()
    {
        edit->setText(QString("1+").repeated(400) + "1");
        QCOMPARE(valueLabel->text(), "= 401");
        edit->moveCursor(QTextCursor::End);
        QVERIFY(edit->viewport()->rect().contains(edit->cursorRect().center()));
    }

    void refuses_a_text_beyond_the_limit()
    {
        edit->setText(QString("1+").repeated(50000) + "1");
        QVERIFY(!edit->problem().isEmpty());
        QCOMPARE(edit->text().size(), 100001);
        edit->setText("1");
        QCOMPARE(edit->problem(), QString());
    }

    // ----- colours ---------------------------------------------------------------

    void colours_tokens_apart()
    {
        edit->setText("2*sin(wall)+pi+1");
        const auto formats = formatsOf(*edit);
        QList<QColor> inks;
        for (const int at : {0, 2, 6, 12})  // number, function, name of the model, constant
        {
            QVERIFY(!inks.contains(formats[at].foreground().color()));
            inks += formats[at].foreground().color();
        }
        QCOMPARE(formats[15].foreground(), formats[0].foreground());
        QCOMPARE(formats[1].foreground().color(), edit->palette().color(QPalette::Text));
    }

    void lights_the_partner_of_a_bracket()
    {
        edit->setText("2*(3+[1,2]*[3,4])");
        edit->moveCursor(QTextCursor::End);
        QCOMPARE(litOf(*edit), "..b.............b");
        QTest::keyClick(edit, Qt::Key_Home);
        QCOMPARE(litOf(*edit), ".................");
        for (int count = 0; count < 5; ++count)
            QTest::keyClick(edit, Qt::Key_Right);
        QCOMPARE(litOf(*edit), ".....b...b.......");
    }

    void follows_a_palette_that_changes()
    {
        edit->setText("2*(wall+1)+x");
        dialog->height->setFocus();
        for (const QColor& base : {QColor(Qt::white), QColor(30, 30, 30)})
        {
            QPalette palette = dialog->palette();
            palette.setColor(QPalette::Base, base);
            palette.setColor(QPalette::Text, base.lightness() < 128 ? Qt::white : Qt::black);
            dialog->setPalette(palette);
            for (const QTextCharFormat& format : formatsOf(*edit))  // all text contrasts with the background
                QVERIFY(std::abs(format.foreground().color().lightness() - base.lightness()) > 100);
            QCOMPARE(list->palette().color(QPalette::Base), base);
        }
    }

    void colours_leave_no_step_of_undo()
    {
        edit->setText("2*wall");
        QVERIFY(!edit->document()->isUndoAvailable());
        edit->moveCursor(QTextCursor::End);
        QTest::keyClicks(edit, "+1");
        edit->undo();
        QCOMPARE(edit->text(), "2*wall");
        QCOMPARE(valueLabel->text(), "= 480");
        edit->redo();
        QCOMPARE(edit->text(), "2*wall+1");
        QCOMPARE(valueLabel->text(), "= 481");
    }

    // ----- the list ----------------------------------------------------------------

    void opens_while_a_name_is_typed()
    {
        QTest::keyClicks(edit, "2*");
        QVERIFY(!list->isVisible());
        QTest::keyClicks(edit, "wa");
        QVERIFY(list->isVisible());
        QCOMPARE(namesIn(*list), QStringList("wall"));
        QCOMPARE(list->topLevelItem(0)->text(1), "240");
        QVERIFY(list->geometry().top() > edit->mapToGlobal(QPoint(0, edit->height() - 1)).y());
        QTest::keyClicks(edit, "ll");
        QVERIFY(!list->isVisible());  // nothing to complete
    }

    void does_not_open_for_a_number()
    {
        QTest::keyClicks(edit, "12");
        QVERIFY(!list->isVisible());
    }

    void accepts_by_tab()
    {
        QTest::keyClicks(edit, "2*sqrt");
        QVERIFY(list->isVisible());
        QTest::keyClick(edit, Qt::Key_Tab);
        QCOMPARE(edit->text(), "2*sqrt(2)");
        QCOMPARE(edit->textCursor().selectedText(), "2");
        QVERIFY(!list->isVisible());
        QVERIFY(tip->isVisible());
        QVERIFY(edit->hasFocus());
        edit->undo();
        QCOMPARE(edit->text(), "2*sqrt");
        edit->redo();
        QCOMPARE(edit->text(), "2*sqrt(2)");
    }

    void leaves_the_field_by_tab_without_a_list()
    {
        QTest::keyClicks(edit, "2");
        QTest::keyClick(edit, Qt::Key_Tab);
        QVERIFY(dialog->height->hasFocus());
        QCOMPARE(edit->text(), "2");
    }

    void accepts_by_enter_only_a_row_that_is_selected()
    {
        QTest::keyClicks(edit, "do");
        QVERIFY(list->isVisible());
        QTest::keyClick(edit, Qt::Key_Down);
        QCOMPARE(list->currentItem(), list->topLevelItem(0));
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(edit->text(), "door_width");
        QVERIFY(dialog->isVisible());

        edit->selectAll();
        QTest::keyClicks(edit, "do");
        QVERIFY(list->isVisible());
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(edit->text(), "do");
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
    }

    void never_accepts_by_a_bracket()
    {
        QTest::keyClicks(edit, "sq");
        QTest::keyClick(edit, Qt::Key_Down);
        QTest::keyClicks(edit, "(");
        QCOMPARE(edit->text(), "sq(");
        QVERIFY(!list->isVisible());
    }

    void accepts_by_a_click()
    {
        QTest::keyClicks(edit, "wa");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->topLevelItem(0)).center());
        QCOMPARE(edit->text(), "wall");
        QVERIFY(edit->hasFocus());
    }

    void moves_through_the_rows()
    {
        QTest::keyClicks(edit, "s");
        QTest::keyClick(edit, Qt::Key_Down);
        QTest::keyClick(edit, Qt::Key_Down);
        QCOMPARE(list->currentItem(), list->topLevelItem(1));
        QTest::keyClick(edit, Qt::Key_Up);
        QCOMPARE(list->currentItem(), list->topLevelItem(0));
        QTest::keyClick(edit, Qt::Key_PageDown);
        QVERIFY(list->indexOfTopLevelItem(list->currentItem()) > 1);
        QCOMPARE(edit->text(), "s");
    }

    void opens_anywhere_by_control_space()
    {
        QTest::keyClicks(edit, "2*");
        QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(list->isVisible());
        QVERIFY(namesIn(*list).contains("wall"));
        QVERIFY(namesIn(*list).contains("sin"));
        QTest::keyClick(edit, Qt::Key_Left);
        QVERIFY(!list->isVisible());
        QCOMPARE(edit->text(), "2*");
    }

    void escape_closes_the_list_then_the_tip_then_the_dialog()
    {
        QTest::keyClicks(edit, "sin(wa");
        QVERIFY(list->isVisible() && tip->isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!list->isVisible() && tip->isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!tip->isVisible() && dialog->isVisible());
        QTest::keyClick(edit, Qt::Key_L);  // the tip stays closed within the call
        QVERIFY(list->isVisible() && !tip->isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(tip->isVisible() && !list->isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
    }

    void closes_the_list_when_the_selection_is_deleted()
    {
        QTest::keyClicks(edit, "wa");
        QVERIFY(list->isVisible());
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, "wa");
        QVERIFY(list->isVisible());
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QVERIFY(!list->isVisible());
        QTest::keyClick(edit, Qt::Key_Tab);
        QCOMPARE(edit->text(), QString());
    }

    void keeps_the_list_when_the_model_changes()
    {
        QTest::keyClicks(edit, "sin(wa");
        edit->refresh();
        QVERIFY(list->isVisible() && tip->isVisible());
        QTest::keyClick(edit, Qt::Key_Tab);
        QCOMPARE(edit->text(), "sin(wall");
    }

    void closes_the_list_when_the_host_sets_the_text()
    {
        QTest::keyClicks(edit, "sin(wa");
        edit->setText("1");
        QVERIFY(!list->isVisible() && !tip->isVisible());
    }

    void closes_both_when_the_focus_leaves()
    {
        QTest::keyClicks(edit, "sin(wa");
        QVERIFY(list->isVisible() && tip->isVisible());
        dialog->height->setFocus();
        QVERIFY(!list->isVisible() && !tip->isVisible());
    }

    void closes_both_with_the_dialog()
    {
        QTest::keyClicks(edit, "sin(wa");
        dialog->hide();
        QVERIFY(!list->isVisible() && !tip->isVisible());
    }

    void opens_nothing_in_a_field_that_is_only_read()
    {
        edit->setText("wal");
        edit->setReadOnly(true);
        edit->moveCursor(QTextCursor::End);
        QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(!list->isVisible());
        QGuiApplication::clipboard()->setText("1");
        edit->paste();
        QCOMPARE(edit->text(), "wal");
    }

    void opens_above_where_the_screen_ends()
    {
        const QRect screen = dialog->screen()->availableGeometry();
        const int room = 3 * edit->height();  // enough for the tip, not for the list
        dialog->move(0, screen.bottom() - room - edit->mapTo(dialog.get(), QPoint(0, edit->height())).y());
        QTest::keyClicks(edit, "sin(s");
        QVERIFY(list->isVisible() && tip->isVisible());
        QVERIFY(list->geometry().bottom() < edit->mapToGlobal(QPoint(0, 0)).y());
        QVERIFY(!list->geometry().intersects(tip->geometry()));
    }

    // ----- the tip -----------------------------------------------------------------

    void shows_the_call_around_the_cursor()
    {
        QTest::keyClicks(edit, "min(1,");
        QVERIFY(tip->isVisible());
        QCOMPARE(lineOfTip(*tip), "min(x, <b>y</b>)\nReturn smaller of two values");
        QVERIFY(tip->geometry().bottom() < edit->mapToGlobal(QPoint(0, 0)).y());
        QTest::keyClicks(edit, "2,3");
        QCOMPARE(lineOfTip(*tip), "min(x, y, <b>z</b>)\nReturn smaller of three values");
        QTest::keyClicks(edit, ")");
        QVERIFY(!tip->isVisible());
        QTest::keyClick(edit, Qt::Key_Left);
        QVERIFY(tip->isVisible());
    }

    void shows_the_unit_of_an_argument()
    {
        QTest::keyClicks(edit, "sin(");
        QCOMPARE(lineOfTip(*tip), "sin(<b>x</b>)\nSine, in degree");
    }

    void shows_the_coordinates_of_a_point()
    {
        dialog->insertion->setFocus();
        QTest::keyClicks(dialog->insertion, "[1,");
        for (const QLabel* label : dialog->insertion->findChildren<QLabel*>())
            if (label->isWindow())
                QCOMPARE(lineOfTip(*label), "[x, <b>y</b>, z]\nConvert Number To Point");
    }

    void explains_the_item_at_the_cursor_by_f1()
    {
        QShortcut hosts(QKeySequence(Qt::Key_F1), dialog.get());
        bool isTaken = false;
        connect(&hosts, &QShortcut::activated, [&isTaken] { isTaken = true; });
        edit->setText("sqrt(wall+16)");
        QTest::keyClick(edit, Qt::Key_F1);
        QVERIFY(tip->isVisible());
        QVERIFY2(lineOfTip(*tip).startsWith("<b>sqrt(x)</b>\nSquare root"), qPrintable(tip->text()));
        QVERIFY2(lineOfTip(*tip).endsWith("sqrt(wall+16) = 16"), qPrintable(tip->text()));
        QTest::keyClick(edit, Qt::Key_Escape);
        for (int count = 0; count < 6; ++count)
            QTest::keyClick(edit, Qt::Key_Right);
        QTest::keyClick(edit, Qt::Key_F1);
        QCOMPARE(lineOfTip(*tip), "wall = 240");
        QVERIFY(!isTaken);
    }

    void has_nothing_to_explain_in_an_empty_field()
    {
        QTest::keyClick(edit, Qt::Key_F1);
        QVERIFY(!tip->isVisible());
        QTest::keyClicks(edit, "[");
        QVERIFY(tip->isVisible());
        QTest::keyClick(edit, Qt::Key_F1);
        QVERIFY(!tip->isVisible() || !tip->text().isEmpty());
    }

    void explains_what_the_pointer_rests_on()
    {
        edit->setText("2*wall+");
        dialog->height->setFocus();
        hover(3);
        QCOMPARE(QToolTip::text(), "wall = 240");
        hover(6);
        QCOMPARE(QToolTip::text(), edit->problem());
    }

    // ----- writing systems ---------------------------------------------------------

    void counts_in_units_of_qstring()
    {
        edit->setText(QString::fromUtf8("\U0001D465*h\u00f6ha*h\u00f6hb"));
        QCOMPARE(underlinesOf(*edit), "........uuuu");
        edit->setText(QString::fromUtf8("\U0001D465+(h\u00f6ha)"));
        QCOMPARE(valueLabel->text(), "= 9");
        edit->moveCursor(QTextCursor::End);
        QCOMPARE(litOf(*edit), "...b....b");
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, "+wa");
        QTest::keyClick(edit, Qt::Key_Tab);
        QCOMPARE(edit->text(), QString::fromUtf8("\U0001D465+(h\u00f6ha+wall"));
        QCOMPARE(edit->textCursor().position(), edit->text().size());
    }

    void takes_any_text()
    {
        for (const QString& text :
             {QString::fromUtf8("e\u0301+\u200f1\u202e2"), QString(QChar(0xD800)) + "+1", QString("1+") + QChar(0xDC00),
              QString(QChar(0x00A0)) + "1", QString(QChar(0)) + "1", QString::fromUtf8("\u05d0\u05d1+1")})
        {
            edit->setText(text);
            QCOMPARE(edit->text().size(), text.size());
            QCOMPARE(formatsOf(*edit).size(), text.size());
            for (int at = 0; at <= text.size(); ++at)
            {
                QTest::keyClick(edit, Qt::Key_Right);
                QTest::keyClick(edit, Qt::Key_F1);
                QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier);
            }
        }
        edit->setText(QString(QChar(0x00A0)) + "1");
        QCOMPARE(edit->text().at(0), QChar(0x00A0));
    }

    void composes()
    {
        QTest::keyClicks(edit, "wal");
        QInputMethodEvent composing(QString::fromUtf8("\u306b"), {});
        QApplication::sendEvent(edit, &composing);
        QCOMPARE(edit->text(), "wal");
        QVERIFY(!list->isVisible());
        QInputMethodEvent cancelled;
        QApplication::sendEvent(edit, &cancelled);
        QCOMPARE(edit->text(), "wal");
        QVERIFY(formatsOf(*edit)[0].foreground().style() != Qt::NoBrush);
        QInputMethodEvent composed;
        composed.setCommitString("l");
        QApplication::sendEvent(edit, &composed);
        QCOMPARE(valueLabel->text(), "= 240");
    }

    void reads_from_left_to_right_in_a_dialog_that_does_not()
    {
        dialog->setLayoutDirection(Qt::RightToLeft);
        edit->setText("1+2");
        QTextCursor end = edit->textCursor();
        end.movePosition(QTextCursor::End);
        QVERIFY(edit->cursorRect().left() < edit->cursorRect(end).left());
        QVERIFY(edit->cursorRect().left() < edit->width() / 4);
    }

private:
    /// Moves the pointer over a character.
    void hover(int position)
    {
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(position);
        const QPoint at = edit->cursorRect(cursor).center() + QPoint(3, 0);
        QHelpEvent event(QEvent::ToolTip, at, edit->viewport()->mapToGlobal(at));
        QApplication::sendEvent(edit->viewport(), &event);
    }

    std::unique_ptr<InsertDialog> dialog;
    ExpressionEdit* edit = nullptr;
    QTreeWidget* list = nullptr;
    QLabel* tip = nullptr;
    QLabel* valueLabel = nullptr;
};

QTEST_MAIN(ExpressionEditTests)
#include "ExpressionEditTests.moc"
