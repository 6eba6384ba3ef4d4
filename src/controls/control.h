// What all controls have in common. A control keeps values and knows no toolkit. The program works on these values, and
// whoever shows them hears of each change by a notice and has none of its own. A control lives on the thread that made
// it, and every call is made there; debug builds assert it.
#pragma once

#include <cassert>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <thread>
#include <utility>

namespace tresmor {

// What is about to change or has changed.
struct Notice {
  enum class What {
    Enabled,
    Visible,
    Frozen,
    Text,
    ToolTip,
    Value,
    Tag,
    Interval,
    BackColor,
    Place,   // where it stands and how large it is
    Look,    // its border and how flat it is
    Client,  // the room that it leaves to others
    State,   // of a window
    Parent,
    Focus,      // it is to take the keys from now on
    Selection,  // all its text is to be selected
    PopUp,      // it is to open at the pointer
    ToFront,    // it is to cover what stands there too
    SelectedTab,
    ListIndex,
    SortKey,
    SortOrder,
    Item,         // first = last = the position of one caption or tick
    Columns,      // headers
    RowsAdded,    // first to last, at the end of the list
    RowsRemoved,  // first to last
    RowsChanged,  // cells, marks, selection or colours of first to last
    RowsReset,    // any rows may have moved or gone
  };
  enum class When { Before, After };

  What what = What::Value;
  When when = When::Before;
  std::int32_t first = 0;
  std::int32_t last = 0;
};

// Colours are 0x00BBGGRR or numbers of the desktop's own colours, such as these: of its ground, and of what stands
// under the text of a box.
inline constexpr std::uint32_t kDesktopGround = 0x80000001;
inline constexpr std::uint32_t kWindowGround = 0x80000005;

class Control;

template <class T>
struct AnyValue {
  void operator()(const T&) const {}
};

// One value of a control: read by calling it, written by assigning to it. Writing what it holds already tells nobody.
// `Check` throws a Failure for a value that the control can't take, which then stays as it was.
template <class T, class Check = AnyValue<T>>
class Property {
 public:
  Property(Control& owner, Notice::What what, T value = T()) : owner_(owner), what_(what), value_(std::move(value)) {}
  Property(const Property&) = delete;

  const T& operator()() const;
  void operator=(T value);
  void operator=(const Property&) = delete;

 private:
  Control& owner_;
  Notice::What what_;
  T value_;
};

class Control {
 public:
  using Listener = std::function<void(const Notice&)>;

  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // `listener` is called before and after each change for as long as the control lives. It may read the control at both
  // times and write it after.
  void Listen(Listener listener);

  Property<bool> Enabled{*this, Notice::What::Enabled, true};
  Property<bool> Visible{*this, Notice::What::Visible, true};

  // Shown while the pointer rests on it; empty for none.
  Property<std::string> ToolTipText{*this, Notice::What::ToolTip};

  // The topic of the help about it, by its number; 0 for that of what it stands in.
  std::int32_t HelpContextID = 0;

  // Asks whoever shows it to give it the keyboard.
  void SetFocus() { Tell(Notice::What::Focus, Notice::When::After); }

 protected:
  ~Control() = default;
  void CheckThread() const { assert(std::this_thread::get_id() == thread_); }
  void Tell(Notice::What what, Notice::When when, std::int32_t first = 0, std::int32_t last = 0);
  // Makes one change between its two notices.
  template <class Change>
  void Announce(Notice::What what, std::int32_t first, std::int32_t last, Change&& change) {
    Tell(what, Notice::When::Before, first, last);
    change();
    Tell(what, Notice::When::After, first, last);
  }

 private:
  template <class T, class Check>
  friend class Property;

  std::thread::id thread_ = std::this_thread::get_id();
  std::deque<Listener> listeners_;  // a deque, since a listener may add another
};

template <class T, class Check>
const T& Property<T, Check>::operator()() const {
  owner_.CheckThread();
  return value_;
}

template <class T, class Check>
void Property<T, Check>::operator=(T value) {
  owner_.CheckThread();
  Check()(value);
  if (value == value_) return;
  owner_.Announce(what_, 0, 0, [&] { value_ = std::move(value); });
}

}  // namespace tresmor
