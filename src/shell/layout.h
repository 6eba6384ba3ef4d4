// Where the parts of the main window stand. All sums are twips of single precision. Interface thread.
#pragma once

#include "platform/screen.h"
#include "shell/frm_main.h"

namespace tresmor {

// Lays the window out for its present size, and gives it back a size below the least. A step that fails, as one does
// that would leave a control less than no room, is passed over. Right-hand frames go by the window's outer width and
// the tabs by its inner one, so that they are apart by the width of the frame as well.
void Resize(FrmMain& frm);
// The bounds below which it does so, of the window's outer edges. The height is that of the upper panels and the status
// bar with what the window has around them at present.
inline constexpr float kLeastWidth = 10000;
float LeastHeight(const FrmMain& frm);
// Lays out the frame of the scope and what is in it.
void ResizeSelPath(FrmMain& frm);

// From now on a new size is laid out, and a tab that is chosen has its frame shown and laid out. The frames of TabPath
// are the scope's own matter (ScopePage): whoever shows them has done so before, by a listener of its own.
void BindLayout(FrmMain& frm);

// Leaves a window of normal size no room but for its upper panels and the status bar.
void Collapse(FrmMain& frm);
// Gives a window of normal size room for results, and another place where it would leave the work area.
void OpenForResult(FrmMain& frm, const Screen& screen);

// Seats a bar in a panel, `margin` within its edges, and keeps in `prevParent` what it stood in; with that set it is
// seated already, and nothing happens. It is not moved again.
void EmbedProgressBar(ProgressBar& pb, StatusBar& bar, const Panel& panel, float margin, const Control*& prevParent);
void InitProgressBar(FrmMain& frm);
// Takes it back to where it stood, so that the status bar can go without it.
void ReleaseProgressBar(FrmMain& frm);

}  // namespace tresmor
