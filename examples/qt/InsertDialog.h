// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// InsertDialog.h - a dialog for the size and position of a part, with the names of a model.
#pragma once

#include "ExpressionEdit.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>

#include <map>

using Model = std::map<std::string, mathexpr::Value, std::less<>>;

class InsertDialog : public QDialog
{
public:
    explicit InsertDialog(const Model& model)
    {
        setWindowTitle("Insert a part");
        auto* form = new QFormLayout(this);
        form->addRow("&Width", width);
        form->addRow("&Height", height);
        form->addRow("&Insertion point", insertion);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        form->addRow(buttons);

        mathexpr::Options options;
        options.resolver = [model](std::string_view name) {
            const auto known = model.find(name);
            return known == model.end() ? std::nullopt : std::optional(known->second);
        };
        for (const auto& known : model)
            options.names.push_back(known.first);
        for (ExpressionEdit* field : {width, height, insertion})
        {
            field->setMinimumWidth(50 * fontMetrics().averageCharWidth());
            field->setWanted(field == insertion ? MATHEXPR_VALUE_POINT : MATHEXPR_VALUE_NUMBER);
            field->setModel(options);
        }
    }

    // The texts are stored, valid or not; the values are used for computing.
    ExpressionEdit* const width = new ExpressionEdit;
    ExpressionEdit* const height = new ExpressionEdit;
    ExpressionEdit* const insertion = new ExpressionEdit;
};
