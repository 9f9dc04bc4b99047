// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionEdit.h - an edit box for an expression: one line, with colours, a completion list, a call tip, a red line
// under errors, and the value at the right. It never changes the user's text by itself, valid or not.
//
//     Ctrl+Space, Ctrl+Shift+Space   opens the list; opens the call tip
//     Tab                            accepts the selected row of the list, or else its first
//     Enter                          accepts the selected row; without one, the dialog has the key
//     Escape                         closes the list, then the tip; then the dialog has the key
//     F1                             shows help for the item at the cursor, or else for the call around it
#pragma once

#include <mathexpr_editor.hpp>

#include <QLabel>
#include <QPlainTextEdit>
#include <QTextLayout>
#include <QTreeWidget>

class ExpressionEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit ExpressionEdit(QWidget* parent = nullptr);

    /// Sets the resolver, which supplies the names of the model and must not throw, and the list of these names. Texts
    /// are limited to 5000 characters unless the options have another limit.
    void setModel(mathexpr::Options options);
    /// MATHEXPR_VALUE_NUMBER, _POINT or, initially, _EITHER. A value of another kind is an error.
    void setWanted(std::uint32_t kind) { wanted_ = kind, refresh(); }
    /// Evaluates the text again. Call when values of the model have changed.
    void refresh();

    /// The text as typed. Store it whether or not it is valid.
    QString text() const { return document()->toRawText(); }  // toPlainText would replace no-break spaces
    /// Replaces the text, and clears the undo history. Line breaks and control characters become blanks.
    void setText(const QString& text);
    /// The value of the text, if it has one of the wanted kind.
    const std::optional<mathexpr::Value>& value() const { return value_; }
    /// Why there is no value; empty if there is one, and for an empty text.
    const QString& problem() const { return problem_; }

signals:
    /// Emitted when the text or its value may have changed.
    void edited();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    mathexpr::Editor editor() { return mathexpr::Editor(expression_); }
    std::string_view utf8() const { return {utf8_.constData(), static_cast<std::size_t>(utf8_.size())}; }
    std::size_t byteAt(int position) const { return static_cast<std::size_t>(text_.left(position).toUtf8().size()); }
    std::size_t cursorByte() const { return byteAt(textCursor().position()); }
    int unitsIn(std::size_t start, std::size_t length) const;
    QTextCursor select(std::size_t start, std::size_t length) const;
    bool isMistakeShown() const { return !problem_.isEmpty() && !(isUnfinished_ && hasFocus()); }

    mathexpr::Result<mathexpr::Value> evaluate();
    void showOutcome();
    void colour();
    void follow(const std::function<void()>& change, bool isOffered = false);
    void openList();
    void accept(QTreeWidgetItem* row);
    void showCallTip();
    QString help(std::size_t byte);
    bool showTip(const QString& html, std::size_t byte);
    void showBeside(QWidget* popup, std::size_t byte, bool isBelow);
    void closePopups() { list_->hide(), tip_->hide(); }

    mathexpr::Options options_;
    mathexpr::Expression expression_;  // for the editor; never compiles a text
    std::uint32_t wanted_ = MATHEXPR_VALUE_EITHER;

    QString text_;     // last evaluated text, with its outcome
    QByteArray utf8_;  // the same in UTF-8
    std::vector<mathexpr::Editor::Token> tokens_;
    std::optional<mathexpr::Value> value_;
    QString problem_;
    QTextLayout::FormatRange mistake_;
    bool isUnfinished_ = false;

    QLabel* valueLabel_ = new QLabel(this);
    QLabel* tip_ = new QLabel(this, Qt::ToolTip);
    bool isTipClosed_ = false;  // with Escape, until the cursor leaves the call
    QTreeWidget* list_ = new QTreeWidget(this);
    std::vector<mathexpr::Editor::Completion> items_;  // the rows of the list
    bool isTyping_ = false;
};
