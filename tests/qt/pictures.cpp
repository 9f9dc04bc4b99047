// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// pictures.cpp - qt_pictures FOLDER REFERENCES - renders the pictures of the dialog of examples/qt for
// docs/embedding.md: filled in, with an error, with the list and the tip open; light and dark. Compares each with the
// picture of the same name in REFERENCES. Reports every difference, and fails if there is one.
#include "InsertDialog.h"

#include <QApplication>
#include <QDir>
#include <QHelpEvent>
#include <QPainter>
#include <QTest>
#include <QTextStream>
#include <QToolTip>

#include <algorithm>

namespace {

/// Whether two pictures show the same. Another version of the font or of Qt changes only the edges of letters, which
/// are a few pixels. A changed colour, text or position changes more.
bool isAlike(const QImage& one, const QImage& other)
{
    if (one.size() != other.size())
        return false;
    qint64 differing = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
        {
            const QColor left = one.pixelColor(x, y);
            const QColor right = other.pixelColor(x, y);
            differing += std::max({std::abs(left.red() - right.red()), std::abs(left.green() - right.green()),
                                   std::abs(left.blue() - right.blue())}) > 40;
        }
    return differing * 500 < static_cast<qint64>(one.width()) * one.height();
}

QPalette paletteOf(bool isDark)
{
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, QRgb colour) { palette.setColor(role, QColor(colour)); };
    set(QPalette::Window, isDark ? 0x2B2B2B : 0xF2F2F2);
    set(QPalette::WindowText, isDark ? 0xE6E6E6 : 0x1A1A1A);
    set(QPalette::Base, isDark ? 0x1E1E1E : 0xFFFFFF);
    set(QPalette::Text, isDark ? 0xE6E6E6 : 0x1A1A1A);
    set(QPalette::Button, isDark ? 0x3A3A3A : 0xE8E8E8);
    set(QPalette::ButtonText, isDark ? 0xE6E6E6 : 0x1A1A1A);
    set(QPalette::ToolTipBase, isDark ? 0x3A3A3A : 0xFFFBE6);
    set(QPalette::ToolTipText, isDark ? 0xE6E6E6 : 0x1A1A1A);
    set(QPalette::PlaceholderText, isDark ? 0xA0A0A0 : 0x6A6A6A);
    set(QPalette::Highlight, isDark ? 0x2F65A0 : 0x3875D7);
    set(QPalette::HighlightedText, 0xFFFFFF);
    return palette;
}

/// The dialog and its open popups, on a plain background.
QImage pictureOf(InsertDialog& dialog, bool isDark)
{
    QList<QWidget*> shown{&dialog};
    QRect area = dialog.geometry();
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget != &dialog)
        {
            shown += widget;
            area |= widget->geometry();
        }
    area.adjust(-8, -8, 8, 8);
    QImage image(area.size() * dialog.devicePixelRatio(), QImage::Format_RGB32);
    image.setDevicePixelRatio(dialog.devicePixelRatio());
    image.fill(isDark ? QColor(0x12, 0x12, 0x12) : QColor(0xD4, 0xD8, 0xDC));
    QPainter painter(&image);
    for (QWidget* widget : shown)
        painter.drawPixmap(widget->geometry().topLeft() - area.topLeft(), widget->grab());
    return image;
}

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    application.setFont(QFont("DejaVu Sans", 10));
    application.setCursorFlashTime(0);
    const QDir folder(application.arguments().value(1));
    const QDir references(application.arguments().value(2));
    int status = 0;
    for (const bool isDark : {false, true})
    {
        application.setPalette(paletteOf(isDark));
        QToolTip::setPalette(paletteOf(isDark));
        for (const QString name : {"normal", "error", "list"})
        {
            InsertDialog dialog(
                {{"wall", 240}, {"door_width", 885}, {"door_height", 2010}, {"corner", mathexpr::Point{1200, 800, 0}}});
            dialog.width->setText("door_width+2*60");
            dialog.height->setText(name == "error" ? "door_hight+60" : "max(door_height+60,2100)");
            dialog.insertion->setText("corner+[wall,wall/2,0]");
            dialog.move(100, 100);
            dialog.show();
            ExpressionEdit* const field = name == "normal" ? dialog.insertion : dialog.height;
            field->setFocus();
            if (!QTest::qWaitForWindowActive(&dialog))
                return 1;
            field->moveCursor(QTextCursor::End);
            if (name == "list")
            {
                field->selectAll();
                QTest::keyClicks(field, "max(d");
                QTest::keyClick(field, Qt::Key_Down);
            }
            if (name == "error")
            {
                QHelpEvent resting(QEvent::ToolTip, field->cursorRect().center() / 3,
                                   field->mapToGlobal(QPoint(60, 12)));
                QApplication::sendEvent(field->viewport(), &resting);
            }
            QApplication::processEvents();
            const QString file = "expression-edit-" + name + (isDark ? "-dark.png" : "-light.png");
            const QImage picture = pictureOf(dialog, isDark);
            if (!picture.save(folder.filePath(file)) || !isAlike(picture, QImage(references.filePath(file))))
            {
                QTextStream(stderr) << folder.filePath(file) << " is not like " << references.filePath(file) << '\n';
                status = 1;
            }
        }
    }
    return status;
}
