#pragma once

#include <span>

#include "description/class_description.h"

namespace brantel {

// What happens in a dialog. The one who shows it passes on what the operator does; it answers
// through its DialogView.
class Dialog {
 public:
  Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;
  virtual ~Dialog() = default;

  // The number of its template in the module's resources.
  [[nodiscard]] virtual int template_id() const = 0;
  [[nodiscard]] virtual std::span<const BitmapButton> bitmap_buttons() const { return {}; }

  // Fills the dialog, which is there but not yet seen.
  virtual void Open() = 0;

  // A button, radio button or check box was pressed.
  virtual void Press(int control) = 0;

  // The text of an edit has changed.
  virtual void Change(int /*control*/) {}

  // Another item of a list was selected.
  virtual void Select(int /*control*/) {}

  virtual void Help() = 0;
};

}  // namespace brantel
