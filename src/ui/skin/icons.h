#pragma once

#include <QIcon>
#include <QString>

namespace tonquay::ui {

/// A picture of the suite by its name ("play", "eject"), drawn crisp at any size and scale; it takes the colour of
/// text, and a dim one where it is disabled. An unknown name gives an empty picture.
QIcon icon(const QString& name);

/// The same in a colour of its own.
QIcon icon(const QString& name, const QColor& colour);

}
