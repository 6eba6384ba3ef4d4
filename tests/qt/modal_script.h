// Answers modal windows from a script. One that isn't expected fails the test and is closed by Escape; so does one that
// never comes.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <functional>
#include <vector>

#include "qt/qt_test.h"

namespace tresmor::tests {

template <class Widget>
Widget* Find(const QWidget& window, const QString& text) {
  for (Widget* const widget : window.findChildren<Widget*>()) {
    if (widget->isVisible() && widget->text().remove('&') == text) return widget;
  }
  ADD_FAILURE() << "nothing says " << text.toStdString();
  return nullptr;
}

class ModalScript : public QObject {
 public:
  using Answer = std::function<void(QWidget& window)>;

  ModalScript() {
    qApp->installEventFilter(this);
    LookAgain();
  }
  ~ModalScript() override { EXPECT_TRUE(steps_.empty()) << "never came: " << steps_.front().title.toStdString(); }

  // The next window to come has this title.
  void Expect(const QString& title, Answer answer) { steps_.push_back({title, std::move(answer)}); }
  // A message box with this text, which is plain, is answered by this button.
  void ExpectBox(const QString& title, const QString& text, const QString& button = "OK") {
    Expect(title, [text, button](QWidget& window) {
      const auto* const box = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->text(), text);
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      Find<QPushButton>(window, button)->click();
    });
  }
  bool IsDone() const { return steps_.empty(); }

  bool eventFilter(QObject* object, QEvent* event) override {
    const auto isIt = [object](const Answered& answered) { return answered.window == object; };
    if (event->type() == QEvent::Hide && std::erase_if(answered_, isIt) > 0) ActivateWhatIsLeft();
    return false;
  }

 private:
  struct Step {
    QString title;
    Answer answer;
  };

  struct Answered {
    QObject* window;
    bool uncovered = false;  // one that stood over it has gone, so that it may be answered once more
  };

  bool IsAnswered(const QWidget& window) const {
    const auto found = std::ranges::find(answered_, &window, &Answered::window);
    if (found == answered_.end()) return false;
    return !found->uncovered || steps_.empty() || steps_.front().title != window.windowTitle();
  }
  // There is no window manager to do so.
  void ActivateWhatIsLeft() {
    if (!answered_.empty()) {
      answered_.back().uncovered = true;
      return static_cast<QWidget*>(answered_.back().window)->activateWindow();
    }
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->windowType() == Qt::Window) window->activateWindow();
    }
  }

  // A timer doesn't tick in an answer that it gives itself, and an answer may be one that opens the next window.
  void LookAgain() {
    QTimer::singleShot(2, this, [this] {
      LookAgain();
      QWidget* const window = QApplication::activeModalWidget();
      if (window == nullptr || !window->isVisible() || IsAnswered(*window)) return;
      // Keys go to no other window.
      if (!window->isActiveWindow()) return window->activateWindow();
      AnswerTo(*window);
    });
  }
  void AnswerTo(QWidget& window) {
    if (window.findChild<QProgressBar*>() != nullptr) return;  // files are at work
    if (steps_.empty() || steps_.front().title != window.windowTitle()) {
      const auto* const box = qobject_cast<QMessageBox*>(&window);
      ADD_FAILURE() << "unexpected: " << window.windowTitle().toStdString() << ": "
                    << (box == nullptr ? "" : box->text().toStdString());
      answered_.push_back({&window});
      QTest::keyClick(&window, Qt::Key_Escape);
      return;
    }
    const Answer answer = std::move(steps_.front().answer);
    steps_.pop_front();
    answered_.push_back({&window});
    answer(window);
  }

  std::deque<Step> steps_;
  std::vector<Answered> answered_;  // that are on the screen, one over the other
};

}  // namespace tresmor::tests
