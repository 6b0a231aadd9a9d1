// A read-only field that shows the end of a path.
#pragma once

#include "SubclassedControl.h"

/// A path that is too long is shortened in its middle, so that the file's name is seen. With the focus it is
/// an ordinary field: the whole path can be read, selected and copied.
class CPathField : public CSubclassedControl<CWindow> {
  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint() const;
};
