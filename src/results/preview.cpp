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

std::int32_t Dots(float twips, float twipsPerDot) {
  return std::max(1, static_cast<std::int32_t>(std::lround(twips / twipsPerDot)));
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
    if (!pane_.chkPreview.Ticked()) ClrPreview(pane_);
  };
  pane_.imgPreview.Listen([this](const Notice& notice) {
    const bool isNew = notice.what == Notice::What::Value && notice.when == Notice::When::After;
    if (isNew && pane_.imgPreview.File().empty()) ports_.loader.Drop();
  });
}

void Preview::Show() {
  const ListView& lst = results_.Shown();
  const std::int32_t row = lst.SelectedItem();
  if (row == 0 || !pane_.chkPreview.Ticked()) return;
  const std::string path = PathOf(lst, row);
  ClrPreview(pane_);
  if (!IsPicExt(path)) return;
  pane_.imgPreview.Visible = true;
  pane_.imgPreview.File = path;
  pane_.txtFilename.Text = lst.Cell(row, kNameItem);
  pane_.txtFilename.ToolTipText = path;
  if (ports_.loader.IsStuck()) return ShowErrorPicture();
  Load(path, [this](SharedImage picture) {
    if (!picture) return ShowErrorPicture();
    pane_.imgPreview.Image = std::move(picture);
  });
}

void Preview::ShowErrorPicture() {
  Load(ports_.errorPicture, [this](SharedImage picture) { pane_.imgPreview.Image = std::move(picture); });
}

void Preview::Load(const std::string& file, PictureLoader::Done done) {
  const float twipsPerDot = ports_.twipsPerDot();
  ports_.loader.Load(file, Dots(pane_.imgPreview.Width(), twipsPerDot), Dots(pane_.imgPreview.Height(), twipsPerDot),
                     std::move(done));
}

}  // namespace tresmor
