#include "results/preview.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "results/rows.h"

namespace tresmor {
namespace {

constexpr std::array<std::string_view, 9> kPicExts = {"jpeg", "jpg", "gif", "bmp", "ico", "rle", "cur", "wmf", "emf"};

std::int32_t Pixels(float twips, float twipsPerPixel) {
  return std::max(1, static_cast<std::int32_t>(std::lround(twips / twipsPerPixel)));
}

}  // namespace

void ClrPreview(PreviewPane& pane) {
  pane.imgPreview.File = "";
  pane.imgPreview.Image = nullptr;
  pane.txtFilename.Text = "";
  pane.txtFilename.ToolTipText = "";
}

bool IsPicExt(std::string_view sFile) {
  const std::size_t dot = sFile.rfind('.');
  if (dot == sFile.npos) return false;
  return std::any_of(kPicExts.begin(), kPicExts.end(),
                     [ext = sFile.substr(dot + 1)](std::string_view known) { return EqualText(ext, known); });
}

Preview::Preview(const ResultLists& results, PreviewPane& pane, const PreviewPorts& ports)
    : results_(results), pane_(pane), ports_(ports) {
  pane_.chkPreview.OnClick = [this] {
    if (!pane_.chkPreview.Ticked()) Clear();
  };
}

void Preview::Show() {
  const ListView& lst = results_.Shown();
  const std::int32_t row = lst.SelectedItem();
  if (row == 0 || !pane_.chkPreview.Ticked()) return;
  const std::string path = PathOf(lst, row);
  Clear();
  if (!IsPicExt(path)) return;
  pane_.imgPreview.Visible = true;
  pane_.imgPreview.File = path;
  pane_.txtFilename.Text = lst.Cell(row, kNameItem);
  pane_.txtFilename.ToolTipText = path;
  Load(path, [this, path](SharedImage picture) { Arrive(path, std::move(picture)); });
}

void Preview::Clear() {
  ports_.loader.Drop();
  ClrPreview(pane_);
}

void Preview::Load(const std::string& file, PictureLoader::Done done) {
  const float twipsPerPixel = ports_.twipsPerPixel();
  ports_.loader.Load(file, Pixels(pane_.imgPreview.Width(), twipsPerPixel),
                     Pixels(pane_.imgPreview.Height(), twipsPerPixel), std::move(done));
}

// Others may have cleared the pane meanwhile.
void Preview::Arrive(const std::string& path, SharedImage picture) {
  if (pane_.imgPreview.File() != path) return;
  if (picture) {
    pane_.imgPreview.Image = std::move(picture);
    return;
  }
  Load(ports_.errorPicture, [this, path](SharedImage errorPicture) {
    if (pane_.imgPreview.File() == path) pane_.imgPreview.Image = std::move(errorPicture);
  });
}

}  // namespace tresmor
