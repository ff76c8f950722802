#include "host/windows/help_window.h"

#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace tonquay::host {

namespace {

/// A browser that reads files and nothing else.
class Pages final : public QTextBrowser {
public:
    Pages()
    {
        setOpenExternalLinks(false);
        setAccessibleName(QStringLiteral("Help topic"));
        document()->setDocumentMargin(20);
    }

    QVariant loadResource(int type, const QUrl& name) override
    {
        return name.isLocalFile() || name.isRelative() ? QTextBrowser::loadResource(type, name) : QVariant();
    }

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override
    {
        if (url.isLocalFile() || url.isRelative())
            QTextBrowser::doSetSource(url, type);
    }
};

QString topicFile(const QString& folder, std::int32_t topic)
{
    const QStringList found =
        QDir(folder).entryList({QStringLiteral("%1-*.html").arg(topic)}, QDir::Files | QDir::Readable, QDir::Name);
    return found.isEmpty() ? QString() : folder + '/' + found.front();
}

}

class HelpWindow::Browser final : public QWidget {
public:
    Browser()
    {
        setWindowTitle(QStringLiteral("CD-Tonquay Help"));
        auto column = std::make_unique<QVBoxLayout>();
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        auto bar = std::make_unique<QToolBar>();
        back_ = bar->addAction(QStringLiteral("&Back"), &pages_, &QTextBrowser::backward);
        forward_ = bar->addAction(QStringLiteral("&Forward"), &pages_, &QTextBrowser::forward);
        bar->addAction(QStringLiteral("&Contents"), this,
                       [this] { showFile(folder_ + QStringLiteral("/index.html")); });
        bar->addSeparator();
        find_.setPlaceholderText(QStringLiteral("Find in this topic (Ctrl+F)"));
        find_.setAccessibleName(QStringLiteral("Find in this topic"));
        find_.setClearButtonEnabled(true);
        find_.setMaximumWidth(260);
        bar->addWidget(&find_);
        column->addWidget(bar.release());
        column->addWidget(&pages_);
        setLayout(column.release());
        connectAll();
        const QSize room = screen()->availableSize();
        resize(QSize(680, 620).boundedTo(QSize(room.width() - 40, room.height() - 60)));
    }

    void showTopic(const QString& folder, std::int32_t topic)
    {
        folder_ = folder;
        const QString file = topicFile(folder, topic);
        if (file.isEmpty())
            pages_.setHtml(QStringLiteral("<h2>This topic is not there</h2><p>Topic %1 was looked for in<br>%2</p>"
                                          "<p>The launcher puts the help into the program folder. Start it once more, "
                                          "or install the program anew.</p>")
                               .arg(topic)
                               .arg(folder.toHtmlEscaped()));
        else
            showFile(file);
        show();
        raise();
        activateWindow();
        pages_.setFocus();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape)
            close();
        else
            QWidget::keyPressEvent(event);
    }

private:
    void showFile(const QString& file) { pages_.setSource(QUrl::fromLocalFile(file)); }

    void connectAll()
    {
        back_->setEnabled(false);
        forward_->setEnabled(false);
        connect(&pages_, &QTextBrowser::backwardAvailable, back_, &QAction::setEnabled);
        connect(&pages_, &QTextBrowser::forwardAvailable, forward_, &QAction::setEnabled);
        connect(&find_, &QLineEdit::textChanged, this, [this] { find(true); });
        connect(&find_, &QLineEdit::returnPressed, this, [this] { find(false); });
        addShortcut(QKeySequence::Find, [this] {
            find_.setFocus();
            find_.selectAll();
        });
        addShortcut(QKeySequence::ZoomIn, [this] { pages_.zoomIn(); });
        addShortcut(QKeySequence(QStringLiteral("Ctrl+=")), [this] { pages_.zoomIn(); });
        addShortcut(QKeySequence::ZoomOut, [this] { pages_.zoomOut(); });
        addShortcut(QKeySequence::Back, [this] { pages_.backward(); });
        addShortcut(QKeySequence::Forward, [this] { pages_.forward(); });
    }

    void addShortcut(const QKeySequence& keys, std::function<void()> action)
    {
        auto shortcut = std::make_unique<QShortcut>(keys, this);
        connect(shortcut.release(), &QShortcut::activated, this, std::move(action));
    }

    /// The next place behind the present one, else from the top again; while a text is typed, from where it began.
    void find(bool typing)
    {
        if (typing) {
            QTextCursor cursor = pages_.textCursor();
            cursor.setPosition(cursor.selectionStart());
            pages_.setTextCursor(cursor);
        }
        if (pages_.find(find_.text()))
            return;
        pages_.moveCursor(QTextCursor::Start);
        pages_.find(find_.text());
    }

    QString folder_;
    Pages pages_;
    QLineEdit find_;
    QAction* back_ = nullptr;
    QAction* forward_ = nullptr;
};

HelpWindow::HelpWindow(std::function<std::string(std::wstring_view)> hostPath) : hostPath_(std::move(hostPath)) {}

HelpWindow::~HelpWindow() = default;

void HelpWindow::display()
{
    if (!browser_)
        browser_ = std::make_unique<Browser>();
    const std::string file = hostPath_(file_);
    browser_->showTopic(QFile::decodeName(file.substr(0, file.rfind('/')).c_str()), topic_);
}

}
