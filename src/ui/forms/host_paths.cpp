#include "ui/forms/host_paths.h"

#include "ui/forms/input.h"

#include <QDir>
#include <QFile>

namespace tonquay::ui {

QString shownPath(platform::FileSystem& files, const std::wstring& path)
{
    const bool whole = path.size() >= 2 && path[1] == L':';
    const std::string host = whole ? files.hostPath(path) : std::string();
    return host.empty() ? qtText(path) : QFile::decodeName(host.c_str());
}

std::wstring typedPath(platform::FileSystem& files, const QString& text)
{
    QString path = text.trimmed();
    if (path == "~" || path.startsWith("~/"))
        path = QDir::homePath() + path.mid(1);
    if (!path.startsWith('/'))
        return text.toStdWString();
    return files.programPath(QFile::encodeName(path).toStdString());
}

}
