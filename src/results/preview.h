// The pane beside the result lists that shows the picture of a row's file.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/pixel_image.h"
#include "controls/check_box.h"
#include "controls/picture.h"
#include "controls/text_box.h"
#include "platform/picture_loader.h"
#include "results/result_lists.h"

namespace tresmor {

struct PreviewPane {
  PreviewPane() { txtFilename.Locked = true; }

  CheckBox chkPreview{true, "Pre&view"};
  Picture imgPreview{{0, 900, 2175, 2175}};  // its size is that of the room there is, as whoever shows it has measured
  TextBox txtFilename;                       // its text can be selected, not changed
};

// Lets go of the picture on show, or on its way, whose file may be about to go. Interface thread.
void ClrPreview(PreviewPane& pane);

// Whether a path's extension is that of a picture, in any case.
bool IsPicExt(std::string_view sFile);

struct PreviewPorts {
  PictureLoader& loader;
  // A picture that says that a file can't be read.
  std::string errorPicture;
  // Of a point of the screen that shows the pane, when it is asked.
  std::function<float()> twipsPerDot;
};

// Shows a row's picture, which comes some time after the click. Interface thread.
class Preview {
 public:
  // Binds chkPreview, and drops the load when the pane is cleared. The preview lives as long as the pane and the
  // loader.
  Preview(const ResultLists& results, PreviewPane& pane, const PreviewPorts& ports);
  Preview(const Preview&) = delete;
  Preview& operator=(const Preview&) = delete;

  // Shows the file of SelectedItem in the list on show, or clears the pane if it is no picture. Without such a row or
  // while chkPreview is off the pane stays as it is.
  void Show();

 private:
  void Load(const std::string& file, PictureLoader::Done done);
  void ShowErrorPicture();

  const ResultLists& results_;
  PreviewPane& pane_;
  const PreviewPorts ports_;
};

}  // namespace tresmor
