#pragma once

class QApplication;

namespace tonquay::ui {

/// Names the application and gives all its windows the suite's look: palette, font and style sheet. Once, before the
/// first window is made.
void dressApplication(QApplication& application);

}
