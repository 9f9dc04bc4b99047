// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// main.cpp - shows the dialog for a small model, and prints the texts that a host would store.
#include "InsertDialog.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InsertDialog dialog(
        {{"wall", 240}, {"door_width", 885}, {"door_height", 2010}, {"corner", mathexpr::Point{1200, 800, 0}}});
    dialog.width->setText("door_width+2*60");
    dialog.height->setText("door_height+60");
    dialog.insertion->setText("corner+[wall,wall/2,0]");
    if (dialog.exec() == QDialog::Accepted)
        for (const ExpressionEdit* field : {dialog.width, dialog.height, dialog.insertion})
            QTextStream(stdout) << field->text() << '\n';
}
