#include "ui/forms/bound_widgets.h"

#include "ui/forms/input.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QToolTip>

#include <memory>

namespace tonquay::ui {

QString captionText(const std::wstring& caption, const char* mnemonics)
{
    QString text = qtText(caption);
    // Some captions are written as a key letter's mark would have it, with two of them for one that is seen.
    text.replace("&&", "&");
    qsizetype place = -1;
    for (const char* letter = mnemonics; *letter != '\0' && place < 0; ++letter)
        place = text.indexOf(QLatin1Char(*letter), 0, Qt::CaseInsensitive);
    const QString before = place < 0 ? text : text.left(place);
    const QString after = place < 0 ? QString() : text.mid(place);
    return QString(before).replace('&', "&&") + (place < 0 ? "" : "&") + QString(after).replace('&', "&&");
}

void bindButton(QPushButton& view, controls::Button& button, Bindings& bindings, const char* mnemonics)
{
    bindings.show(button.caption, [&view, mnemonics](const std::wstring& caption) {
        // A caption that brings its own letter, as "&OK" does, is shown with that.
        view.setText(*mnemonics == '\0' ? qtText(caption).trimmed() : captionText(caption, mnemonics).trimmed());
    });
    bindings.show(button.toolTip, [&view](const std::wstring& tip) { view.setToolTip(qtText(tip)); });
    bindings.show(button.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
    bindVisible(view, button.visible, bindings);
    QObject::connect(&view, &QPushButton::clicked, &view, [&button] { button.press(); });
}

void bindTick(QCheckBox& view, controls::CheckBox& box, Bindings& bindings, const char* mnemonics)
{
    bindings.show(box.caption, [&view, mnemonics](const std::wstring& caption) {
        view.setText(captionText(caption, mnemonics).trimmed());
    });
    bindings.show(box.toolTip, [&view](const std::wstring& tip) { view.setToolTip(qtText(tip)); });
    bindings.show(box.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
    bindVisible(view, box.visible, bindings);
    view.setChecked(box.value() == 1);
    bindings.keep(box.follow([&view](const std::int16_t& value) { view.setChecked(value == 1); }));
    QObject::connect(&view, &QCheckBox::clicked, &view, [&box](bool on) {
        box.setValue(on ? 1 : 0);
        box.mouseUp();
    });
}

void bindFrame(QGroupBox& view, controls::Frame& frame, Bindings& bindings, const char* mnemonics)
{
    bindings.show(frame.caption,
                  [&view, mnemonics](const std::wstring& caption) { view.setTitle(captionText(caption, mnemonics)); });
    bindings.show(frame.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
    bindVisible(view, frame.visible, bindings);
}

void bindLabel(QLabel& view, controls::Label& label, Bindings& bindings, const char* mnemonics)
{
    view.setTextFormat(Qt::PlainText);
    bindings.show(label.caption, [&view, mnemonics](const std::wstring& caption) {
        view.setText(view.buddy() == nullptr ? qtText(caption) : captionText(caption, mnemonics));
    });
    bindings.show(label.toolTip, [&view](const std::wstring& tip) { view.setToolTip(qtText(tip)); });
    bindings.show(label.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
    bindVisible(view, label.visible, bindings);
}

void bindText(QLineEdit& view, controls::TextBox& box, Bindings& bindings, bool& writing)
{
    bindings.show(box.text, [&view, &writing](const std::wstring& text) {
        if (!writing)
            view.setText(qtText(text));
    });
    bindings.show(box.toolTip, [&view](const std::wstring& tip) { view.setToolTip(qtText(tip)); });
    bindings.show(box.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
    bindVisible(view, box.visible, bindings);
    QObject::connect(&view, &QLineEdit::textEdited, &view, [&box, &writing](const QString& text) {
        const Writing typing(writing);
        box.text = text.toStdWString();
    });
    QObject::connect(&view, &QLineEdit::returnPressed, &view, [&box] { box.enter(); });
}

void refuseDoubleQuotes(QLineEdit& view)
{
    auto validator = std::make_unique<QRegularExpressionValidator>(QRegularExpression(QStringLiteral("[^\"]*")), &view);
    view.setValidator(validator.release());
    QObject::connect(&view, &QLineEdit::inputRejected, &view, [&view] {
        QToolTip::showText(view.mapToGlobal(QPoint(0, view.height())),
                           QStringLiteral("A double quote cannot be kept in the settings"), &view);
    });
}

}
