// What the monkey does in the lists of what was found.
#include "soak/monkey.h"

namespace tresmor::soak {

void Monkey::AddResultDeeds() {
  FrmMain& frm = *frm_;
  // A deed on a row of the list on show, if it has any.
  const auto addOnRow = [this, &frm](const char* name, std::size_t weight,
                                     std::function<void(ListView&, std::int32_t)> act) {
    Add(name, weight, [this, &frm, act = std::move(act)] {
      ListView& lst = frm.results.Shown();
      if (lst.Visible() && lst.Count() > 0) act(lst, 1 + dice_.UpTo(lst.Count() - 1));
    });
  };
  addOnRow("mark a row", 6, [this](ListView& lst, std::int32_t row) {
    lst.SetChecked(row, !dice_.OneIn(3));
    lst.OnItemCheck();
  });
  addOnRow("mark every other row", 6, [](ListView& lst, std::int32_t row) {
    for (row %= 2; row < lst.Count(); row += 2) lst.SetChecked(row + 1, true);
    lst.OnItemCheck();
  });
  addOnRow("select a row", 6, [](ListView& lst, std::int32_t row) {
    lst.SetSelected(row, true);
    lst.OnItemClick();
    lst.OnClick();
  });
  addOnRow("take a row out of the selection", 1, [](ListView& lst, std::int32_t row) {
    lst.SetSelected(row, false);
    lst.OnClick();
  });
  addOnRow("double click", 1, [](ListView& lst, std::int32_t row) {
    lst.SetSelected(row, true);
    lst.OnDblClick();
  });
  addOnRow("sort", 4, [this](ListView& lst, std::int32_t) {
    lst.OnColumnClick(static_cast<std::int16_t>(1 + dice_.UpTo(lst.Columns() - 1)));
  });
  addOnRow("move the mouse", 1, [](ListView& lst, std::int32_t row) { lst.OnMouseMove(row); });
  addOnRow("let the mouse go", 1, [this](ListView& lst, std::int32_t) {
    lst.OnMouseUp(dice_.OneIn(2) ? MouseButton::Left : MouseButton::Right);
  });
  Add("choose a list", 6, [this, &frm] { frm.results.tabMain.Select(1 + dice_.UpTo(kResultLists - 1)); });
  Add("tick the preview", 1, [this, &frm] { Toggle(frm.preview.chkPreview); });
}

}  // namespace tresmor::soak
