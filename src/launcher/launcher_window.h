#pragma once

#include "launcher/launch_desk.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace tonquay::launcher {

/// The drives that the window shows, and a way to open an image as one more of them.
class Shelf {
public:
    virtual ~Shelf() = default;
    virtual platform::Discs& discs() = 0;

    /// Opens a disc image by its host path; it becomes a drive of its own, before the machine's. Fails with a sentence
    /// for people when it cannot be opened, and the shelf is as before.
    virtual base::Status open(const std::string& image) = 0;
};

/// The window of the launcher: drives and discs, the names of the chosen disc, and the key that starts the ripper.
class LauncherWindow final : public QWidget {
public:
    LauncherWindow(LaunchDesk& desk, Shelf& shelf);
    ~LauncherWindow() override;

    /// Called when the ripper has started and the launcher is through.
    std::function<void()> finished;

    /// Says what went wrong before the window came up.
    void tell(const std::string& problem);

    void openImage(const std::string& image);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    struct Parts;

    void build();
    void connectAll();
    void takeOverDrives();
    void driveChosen();
    void showDisc();
    void showNoDisc(const std::string& why);
    void chooseImage();
    void start();

    LaunchDesk& desk_;
    Shelf& shelf_;
    std::unique_ptr<Parts> parts_;
    std::vector<platform::DriveDescription> drives_;
    std::optional<SeenDisc> disc_;
    std::string wanted_; ///< host path of the drive that is to be chosen when the drives are looked at next
};

}
