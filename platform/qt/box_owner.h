// Which window a message box, or another window that asks for attention, belongs to.
#pragma once

class QWidget;

namespace mw {

// The innermost modal dialog, else the main window; null before there is any.
QWidget* BoxOwner();

}  // namespace mw
