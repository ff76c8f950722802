#include "host/windows/window_dialogs.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace tonquay::host {

namespace {

QString qtText(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

QMessageBox::Icon boxIcon(platform::Dialogs::Icon icon)
{
    switch (icon) {
    case platform::Dialogs::Icon::information: return QMessageBox::Information;
    case platform::Dialogs::Icon::exclamation: return QMessageBox::Warning;
    case platform::Dialogs::Icon::stop: return QMessageBox::Critical;
    case platform::Dialogs::Icon::question: return QMessageBox::Question;
    case platform::Dialogs::Icon::none: break;
    }
    return QMessageBox::NoIcon;
}

/// While somebody has to answer, the pointer is the usual one.
class UsualPointer {
public:
    explicit UsualPointer(bool busy) : busy_(busy)
    {
        if (busy_)
            QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~UsualPointer()
    {
        if (busy_)
            QApplication::restoreOverrideCursor();
    }
    UsualPointer(const UsualPointer&) = delete;
    UsualPointer& operator=(const UsualPointer&) = delete;

private:
    bool busy_;
};

}

/// The program's paths in a text go to the end of their line, or to two blanks, in the form of this system then.
QString WindowDialogs::shown(std::wstring_view text) const
{
    constexpr std::wstring_view root = L"C:\\";
    std::wstring result;
    while (!text.empty()) {
        const std::size_t start = std::min(text.find(root), text.size());
        result += text.substr(0, start);
        text.remove_prefix(start);
        const std::size_t end = std::min({text.find(L'\n'), text.find(L"  "), text.size()});
        if (end != 0)
            result += QFile::decodeName(paths_.hostPath(text.substr(0, end)).c_str()).toStdWString();
        text.remove_prefix(end);
    }
    return qtText(result).trimmed();
}

platform::Dialogs::Answer WindowDialogs::messageBox(std::wstring_view title, std::wstring_view text, Icon icon,
                                                    Buttons buttons)
{
    const UsualPointer pointer(busy_);
    QMessageBox box(QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(qtText(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(shown(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setIcon(boxIcon(icon));
    if (buttons == Buttons::ok) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return Answer::ok;
    }
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::yes : Answer::no;
}

std::optional<std::wstring> WindowDialogs::inputBox(std::wstring_view title, std::wstring_view prompt,
                                                    std::wstring_view defaultText)
{
    const UsualPointer pointer(busy_);
    QInputDialog box(QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(qtText(title));
    box.setLabelText(qtText(prompt).trimmed());
    box.setTextValue(qtText(defaultText));
    box.resize(420, box.sizeHint().height());
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    // One line of plain text, whatever was pasted.
    QString text = box.textValue();
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    return text.toStdWString();
}

std::optional<std::wstring> WindowDialogs::openFile(const FileQuestion& question)
{
    const UsualPointer pointer(busy_);
    QFileDialog box(QApplication::activeWindow(), qtText(question.title),
                    QFile::decodeName(paths_.hostPath(question.folder).c_str()));
    box.setWindowModality(Qt::ApplicationModal);
    box.setFileMode(QFileDialog::ExistingFile);
    const QString pattern = '(' + qtText(question.pattern) + ')';
    const QString name = qtText(question.filterName);
    QStringList filters{name.endsWith(pattern) ? name : name + ' ' + pattern};
    // Programs have no ending of their own here: whatever may be started is one.
    const QString programs = QStringLiteral("Programs (*)");
    const bool asksForProgram = question.pattern == L"*.exe";
    if (asksForProgram)
        filters.append(programs);
    box.setNameFilters(filters);
    const auto showPrograms = [&](const QString& filter) {
        box.setFilter(asksForProgram && filter == programs
                          ? QDir::AllDirs | QDir::Files | QDir::Executable | QDir::NoDotAndDotDot
                          : QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot);
    };
    QObject::connect(&box, &QFileDialog::filterSelected, &box, showPrograms);
    if (!question.fileName.empty())
        box.selectFile(qtText(question.fileName));
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty())
        return std::nullopt;
    return paths_.programPath(QFile::encodeName(box.selectedFiles().front()).toStdString());
}

void WindowDialogs::beep()
{
    QApplication::beep();
}

void WindowDialogs::setPointer(Pointer pointer)
{
    const bool busy = pointer == Pointer::busy;
    if (busy == busy_)
        return;
    busy_ = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QApplication::restoreOverrideCursor();
}

}
