// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ExpressionEdit.cpp - see ExpressionEdit.h. The library's positions count bytes of UTF-8, Qt's count units of UTF-16;
// unitsIn and byteAt convert. After a change of the text, refresh gets the tokens, the diagnosis and the value; then
// follow opens the list, if a name was typed, and the tip of the call at the cursor.
#include "ExpressionEdit.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>
#include <array>

using mathexpr::Editor;

namespace {

constexpr std::uint32_t maxRows = 1000;  // the whole vocabulary, and a model's names
constexpr int shownRows = 8;
constexpr std::uint32_t valueDigits = 8;

// By MATHEXPR_TOKEN_...; -1 is the text colour. Numbers are blue, constants violet, functions green-blue, variables
// brown, names of the model green.
constexpr std::array<int, 14> hues{210, 280, 175, 30, 110, -1, -1, -1, -1, 30, -1, -1, -1, -1};
constexpr int mistakeHue = 2;
constexpr int litHue = 45;  // of matching brackets

QColor inkOf(int hue, const QPalette& palette, int onLight = 75, int onDark = 180)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return hue < 0 ? palette.color(QPalette::Text) : QColor::fromHsl(hue, 200, isDark ? onDark : onLight);
}

/// Removes what would break the line.
QString oneLine(QString text)
{
    static const QRegularExpression breaking(R"([\p{Cc}\x{2028}\x{2029}\x{FDD0}-\x{FDEF}]+)");
    return text.replace(breaking, " ");
}

/// A part of a tip; empty for an empty text.
QString part(const std::string& text, const char* pattern = "<br>%1")
{
    return text.empty() ? QString() : QString(pattern).arg(QString::fromStdString(text).toHtmlEscaped());
}

}

ExpressionEdit::ExpressionEdit(QWidget* parent) : QPlainTextEdit(parent)
{
    setLineWrapMode(NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    QTextOption direction = document()->defaultTextOption();
    direction.setTextDirection(Qt::LeftToRight);  // expressions are written left to right, whatever their names
    document()->setDefaultTextOption(direction);
    valueLabel_->setAutoFillBackground(true);
    valueLabel_->setBackgroundRole(QPalette::Base);
    valueLabel_->setForegroundRole(QPalette::PlaceholderText);
    tip_->setAutoFillBackground(true);
    tip_->setBackgroundRole(QPalette::ToolTipBase);
    tip_->setForegroundRole(QPalette::ToolTipText);
    tip_->setFrameStyle(QFrame::StyledPanel);
    tip_->setMargin(4);
    list_->setWindowFlags(Qt::ToolTip);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setColumnCount(3);
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->header()->setStretchLastSection(false);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    tip_->setAttribute(Qt::WA_WindowPropagation);  // the field's palette and font
    list_->setAttribute(Qt::WA_WindowPropagation);

    connect(list_, &QTreeWidget::itemClicked, this, &ExpressionEdit::accept);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (text() == text_)
            return;  // only colours have changed
        if (!isTyping_)
            closePopups();
        refresh();
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (isTyping_ || text() != text_)
            return;  // follow or refresh comes next
        list_->hide();
        colour();
        showCallTip();
    });
    setModel({});
}

void ExpressionEdit::setModel(mathexpr::Options options)
{
    options_ = std::move(options);
    if (options_.limits.maxTextLength == 0)
        options_.limits.maxTextLength = 5000;
    if (!options_.resolver)
        options_.resolver = [](std::string_view) { return std::optional<mathexpr::Value>(); };
    expression_ = mathexpr::Expression(options_);
    refresh();
}

void ExpressionEdit::setText(const QString& text)
{
    setPlainText(oneLine(text));
}

void ExpressionEdit::refresh()
{
    text_ = text();
    utf8_ = text_.toUtf8().replace('\0', ' ');  // the library refuses zeros
    tokens_ = editor().tokens(utf8());
    value_.reset();
    problem_.clear();
    if (const auto result = evaluate())
        value_ = *result;
    else if (!text_.trimmed().isEmpty())
    {
        problem_ = result.error().what();
        for (const std::string& hint : result.error().hints())
            problem_ += '\n' + QString::fromStdString(hint);
        const bool isPlaced = result.error().length() > 0;
        mistake_.start = isPlaced ? unitsIn(0, result.error().start()) : 0;
        mistake_.length = isPlaced ? unitsIn(result.error().start(), result.error().length()) : int(text_.size());
    }
    showOutcome();
    emit edited();
}

/// Uses a separate expression, so that an assignment has no effect and the model is asked again.
mathexpr::Result<mathexpr::Value> ExpressionEdit::evaluate()
{
    const Editor::Diagnosis diagnosis = editor().diagnose(utf8(), Editor::HostQuestions::Allowed);
    isUnfinished_ = diagnosis.state == MATHEXPR_TYPING_UNFINISHED;
    if (diagnosis.failure)
        return *diagnosis.failure;
    auto result = mathexpr::tryEvaluate(utf8(), {}, options_);
    if (result && wanted_ == MATHEXPR_VALUE_NUMBER && result->isPoint())
        return mathexpr::Error(tr("A number is needed here, not a point.").toStdString(), {});
    if (result && wanted_ == MATHEXPR_VALUE_POINT && result->isNumber())
        return mathexpr::Error(tr("A point is needed here, such as [1,2,0].").toStdString(), {});
    return result;
}

int ExpressionEdit::unitsIn(std::size_t start, std::size_t length) const
{
    return static_cast<int>(QString::fromUtf8(utf8_.constData() + start, static_cast<qsizetype>(length)).size());
}

QTextCursor ExpressionEdit::select(std::size_t start, std::size_t length) const
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(unitsIn(0, start));
    cursor.setPosition(unitsIn(0, start + length), QTextCursor::KeepAnchor);
    return cursor;
}

void ExpressionEdit::showOutcome()
{
    const int margin = frameWidth() + static_cast<int>(document()->documentMargin());
    setFixedHeight(fontMetrics().lineSpacing() + 1 + 2 * margin);
    const int space = fontMetrics().horizontalAdvance(' ');
    const QString value = value_ ? "= " + QString::fromStdString(value_->text(valueDigits)) : QString();
    valueLabel_->setText(fontMetrics().elidedText(value, Qt::ElideRight, width() * 2 / 5));
    if (isMistakeShown())
        valueLabel_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(fontMetrics().ascent()));
    valueLabel_->setToolTip(value_ ? QString::fromStdString(value_->text()) : problem_);
    valueLabel_->setContentsMargins(3 * space, 0, space, 0);
    const int taken = valueLabel_->sizeHint().width();
    setViewportMargins(0, 0, taken, 0);
    valueLabel_->setGeometry(contentsRect().adjusted(contentsRect().width() - taken, 0, 0, 0));
    colour();
}

/// Colours the tokens, highlights the brackets at the cursor and underlines the error. Leaves the undo history
/// unchanged.
void ExpressionEdit::colour()
{
    const std::size_t cursor = cursorByte();
    const auto isAtCursor = [cursor](const Editor::Token& token) {
        return cursor >= token.start && cursor <= token.start + token.length;
    };
    QList<QTextLayout::FormatRange> formats;
    int start = 0;
    for (const Editor::Token& token : tokens_)  // cover the text without gaps
    {
        formats += {start, unitsIn(token.start, token.length), {}};
        formats.back().format.setForeground(inkOf(hues[token.kind], palette()));
        if (token.partner && (isAtCursor(token) || isAtCursor(tokens_[*token.partner])))
            formats.back().format.setBackground(inkOf(litHue, palette(), 190, 60));
        start += formats.back().length;
    }
    mistake_.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mistake_.format.setUnderlineColor(inkOf(mistakeHue, palette()));
    if (isMistakeShown())
        formats += mistake_;
    document()->firstBlock().layout()->setFormats(formats);
    document()->markContentsDirty(0, document()->characterCount());
}

/// Makes a change requested by the user, and updates colours, list and tip.
/// @param isOffered  whether the list opens at a name
void ExpressionEdit::follow(const std::function<void()>& change, bool isOffered)
{
    const QString before = text_;
    const int position = textCursor().position();
    isTyping_ = true;
    change();
    isTyping_ = false;
    if (text_ == before && textCursor().position() == position)
        return;
    const bool isInName = std::any_of(tokens_.begin(), tokens_.end(), [at = cursorByte()](const Editor::Token& token) {
        return token.kind >= MATHEXPR_TOKEN_CONSTANT && token.kind <= MATHEXPR_TOKEN_UNKNOWN_NAME && token.start < at &&
               at <= token.start + token.length;
    });
    list_->setVisible(list_->isVisible() && text_ != before && isInName);
    if (list_->isVisible() || (isOffered && isInName))
        openList();
    colour();
    showCallTip();
}

void ExpressionEdit::openList()
{
    list_->hide();
    list_->clear();
    const auto noteKind = [this](std::string_view name) {
        const auto value = options_.resolver(name);
        const std::uint32_t kind = value && value->isPoint() ? MATHEXPR_VALUE_POINT : MATHEXPR_VALUE_NUMBER;
        return Editor::NameNotes{value ? kind : std::uint32_t{MATHEXPR_VALUE_UNKNOWN}, {}, {}};
    };
    items_ = editor().completions(utf8(), cursorByte(), {maxRows, {}, noteKind});
    const auto isOfModel = [](const Editor::Completion& item) { return item.kind == MATHEXPR_TOKEN_HOST_NAME; };
    std::stable_partition(items_.begin(), items_.end(), isOfModel);
    if (items_.size() == 1 && items_[0].edit.replacement == utf8().substr(items_[0].edit.start, items_[0].edit.length))
        items_.clear();  // it is already typed
    if (isReadOnly() || items_.empty())
        return;
    for (const Editor::Completion& item : items_)
    {
        const auto value = isOfModel(item) ? options_.resolver(item.name) : item.value;
        auto* row = new QTreeWidgetItem(list_);
        row->setText(0, QString::fromStdString(item.name));
        row->setText(1, value ? QString::fromStdString(value->text(valueDigits)) : QString());
        row->setText(2, QString::fromStdString(item.description));
        row->setForeground(0, inkOf(hues[item.kind], palette()));
    }
    for (int column = 0; column < list_->columnCount(); ++column)
        list_->resizeColumnToContents(column);
    const int rowHeight = list_->visualItemRect(list_->topLevelItem(0)).height();
    const int frame = 2 * list_->frameWidth();
    list_->resize(list_->header()->length() + list_->verticalScrollBar()->sizeHint().width() + frame,
                  std::min(shownRows, list_->topLevelItemCount()) * rowHeight + frame);
    showBeside(list_, items_[0].edit.start, true);
    showCallTip();
}

void ExpressionEdit::accept(QTreeWidgetItem* row)
{
    const Editor::Completion item = items_[static_cast<std::size_t>(list_->indexOfTopLevelItem(row))];
    const auto insert = [this, &item] {
        select(item.edit.start, item.edit.length).insertText(QString::fromStdString(item.edit.replacement));
        setTextCursor(select(item.selection.start, item.selection.length));
    };
    list_->hide();
    follow(insert);
}

void ExpressionEdit::showCallTip()
{
    const Editor::Signature call = editor().signature(utf8(), cursorByte());
    tip_->hide();
    isTipClosed_ = isTipClosed_ && !call.overloads.empty();
    if (call.overloads.empty() || isTipClosed_ || !hasFocus())
        return;
    const Editor::Overload& overload = call.overloads[call.activeOverload];
    const std::size_t current = std::min<std::size_t>(call.argument, overload.parameters.size() - 1);
    QStringList parameters;
    for (std::size_t index = 0; index < overload.parameters.size(); ++index)
        parameters += part(overload.parameters[index], index == current ? "<b>%1</b>" : "%1");
    const QString usage = utf8()[call.name.start] == '[' ? "[%1]" : part(call.function, "%1") + "(%1)";
    showTip(usage.arg(parameters.join(", ")) + part(overload.description) + part(call.unit, ", in %1"),
            call.name.start);
}

/// The help for the item at a position in the text; empty if there is none.
QString ExpressionEdit::help(std::size_t byte)
{
    const Editor::Hover item = editor().hover(utf8(), byte, Editor::HostQuestions::Allowed);
    QString lines =
        part(item.help, "<br><b>%1</b>") + part(item.description) + part(item.unit, ", in %1") + part(item.domain);
    if (item.exampleValue)
        lines += part(item.example + " = " + item.exampleValue->text(valueDigits));
    const std::string valued(utf8().substr(item.valueSpan.start, item.valueSpan.length));
    if (item.value && item.kind != MATHEXPR_TOKEN_NUMBER)
        lines += part(valued + " = " + item.value->text(valueDigits));
    return lines.mid(4);  // after the first <br>
}

bool ExpressionEdit::showTip(const QString& html, std::size_t byte)
{
    tip_->hide();
    tip_->setText(html);
    tip_->adjustSize();
    if (!html.isEmpty())  // on the side opposite to the list
        showBeside(tip_, byte, list_->isVisible() && list_->y() < mapToGlobal(QPoint(0, 0)).y());
    return !html.isEmpty();
}

/// Shows a popup below or above a position in the text, or on the other side of the field if the screen lacks space.
void ExpressionEdit::showBeside(QWidget* popup, std::size_t byte, bool isBelow)
{
    const QRect space = screen()->availableGeometry();
    const int x = viewport()->mapToGlobal(cursorRect(select(byte, 0)).topLeft()).x();
    const int above = mapToGlobal(QPoint(0, -popup->height() - 2)).y();
    const int below = mapToGlobal(QPoint(0, height() + 2)).y();
    const bool hasRoom = isBelow ? below + popup->height() < space.bottom() : above > space.top();
    popup->move(std::max(space.left(), std::min(x, space.right() - popup->width())),
                isBelow == hasRoom ? below : above);
    popup->show();
}

bool ExpressionEdit::event(QEvent* event)
{
    const auto* key = static_cast<QKeyEvent*>(event);  // if it is one
    if (event->type() == QEvent::KeyPress && key->key() == Qt::Key_Tab && list_->isVisible())
    {
        accept(list_->currentItem() != nullptr ? list_->currentItem() : list_->topLevelItem(0));
        return true;
    }
    const bool isDone = QPlainTextEdit::event(event);
    constexpr std::array shown{QEvent::PaletteChange, QEvent::FontChange, QEvent::Resize,
                               QEvent::FocusIn,       QEvent::FocusOut,   QEvent::Hide};
    if (std::find(shown.begin(), shown.end(), event->type()) != shown.end())
    {
        closePopups();
        showOutcome();
    }
    if (event->type() == QEvent::ShortcutOverride)  // sent before a shortcut of the host takes the key
        event->setAccepted(event->isAccepted() || key->key() == Qt::Key_F1 || key->key() == Qt::Key_Space ||
                           (key->key() == Qt::Key_Escape && (list_->isVisible() || tip_->isVisible())));
    return isDone;
}

bool ExpressionEdit::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QPlainTextEdit::viewportEvent(event);
    const auto* asked = static_cast<QHelpEvent*>(event);
    QTextCursor under = cursorForPosition(asked->pos());
    if (asked->pos().x() < cursorRect(under).left())
        under.movePosition(QTextCursor::PreviousCharacter);
    const int at = under.position() - mistake_.start;
    const bool isMistake = isMistakeShown() && at >= 0 && at < mistake_.length;
    const QString text = isMistake ? problem_ : under.atEnd() ? QString() : help(byteAt(under.position()));
    QToolTip::showText(asked->globalPos(), text, this);
    return true;
}

void ExpressionEdit::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool isListOpen = list_->isVisible();
    const bool isMove = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    if (key == Qt::Key_Escape)
    {
        event->setAccepted(isListOpen || tip_->isVisible());
        isTipClosed_ = isTipClosed_ || (!isListOpen && tip_->isVisible());
        (isListOpen ? static_cast<QWidget*>(list_) : tip_)->hide();
    }
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
    {
        event->setAccepted(isListOpen && list_->currentItem() != nullptr);
        if (event->isAccepted())
            accept(list_->currentItem());
    }
    else if (key == Qt::Key_F1)
    {
        const std::size_t call = editor().signature(utf8(), cursorByte()).name.start;
        event->setAccepted(showTip(help(cursorByte()), cursorByte()) || showTip(help(call), call));
    }
    else if (key == Qt::Key_Space && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
    {
        isTipClosed_ = false;
        showCallTip();
    }
    else if (key == Qt::Key_Space && event->modifiers() == Qt::ControlModifier)
        openList();
    else if (isListOpen && isMove)
        QCoreApplication::sendEvent(list_, event);
    else
        follow([this, event] { QPlainTextEdit::keyPressEvent(event); },
               !event->text().isEmpty() && event->text().at(0).isPrint());
}

void ExpressionEdit::inputMethodEvent(QInputMethodEvent* event)
{
    QInputMethodEvent cleaned(event->preeditString(), event->attributes());
    cleaned.setCommitString(oneLine(event->commitString()), event->replacementStart(), event->replacementLength());
    list_->hide();  // it would cover the text being composed
    follow([this, &cleaned] { QPlainTextEdit::inputMethodEvent(&cleaned); }, !event->commitString().isEmpty());
    if (event->preeditString().isEmpty())
        colour();  // for the text replaced by composing
}

void ExpressionEdit::insertFromMimeData(const QMimeData* source)
{
    if (!isReadOnly())
        textCursor().insertText(oneLine(source->text()));
    ensureCursorVisible();
}
