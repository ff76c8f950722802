#pragma once

#include "utility/tag_desk.h"

#include <QWidget>

#include <array>
#include <memory>

class QGridLayout;

namespace tonquay::utility {

/// The utility's window: the values of one file's tag as fields, what else the tag holds, and the keys. It shows what
/// the desk has and hands on what is typed and pressed.
class TagWindow final : public QWidget {
public:
    explicit TagWindow(TagDesk& desk);
    ~TagWindow() override;

    /// Takes over what the desk has, after it was told something by others.
    void takeOver();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Parts;

    void build();
    void dressTexts();
    void dressKeys();
    QWidget& fieldSheet();
    void addField(QGridLayout& grid, std::size_t place);
    void connectAll();
    void showConcerns();
    void showName();
    void ask(void (TagDesk::*what)());

    TagDesk& desk_;
    std::unique_ptr<Parts> parts_;
    std::string shown_; ///< the file that was shown last
};

}
