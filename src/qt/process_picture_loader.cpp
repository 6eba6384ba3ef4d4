#include "qt/process_picture_loader.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/picture_protocol.h"

namespace tresmor {

namespace {

bool IsOver(const QProcess* process) { return process == nullptr || process->state() == QProcess::NotRunning; }

// The toolkit's own waits at its end for the process's, which may never come.
class Helper : public QProcess {
 public:
  ~Helper() override {
    disconnect();
    setProcessState(NotRunning);
  }
};

}  // namespace

struct ProcessPictureLoader::Run {
  // Ends a process without waiting for that: one that hangs in the system on a file may take its time.
  struct Abandon {
    void operator()(QProcess* process) const {
      process->setParent(QCoreApplication::instance());  // which takes it along where it ends first
      if (IsOver(process)) {
        process->deleteLater();
      } else {
        QObject::connect(process, &QProcess::stateChanged, process, [process] {
          if (IsOver(process)) process->deleteLater();
        });
        process->kill();
      }
    }
  };

  PictureRequest asked;
  Done done;
  std::string answer{};
  std::unique_ptr<QProcess, Abandon> process{new Helper};
  QTimer limit{};  // as the receiver of all signals it lets none come after the run
};

ProcessPictureLoader::ProcessPictureLoader(std::string helper, std::chrono::milliseconds limit,
                                           std::chrono::milliseconds ending)
    : helper_(std::move(helper)), limit_(limit), ending_(ending) {}

ProcessPictureLoader::~ProcessPictureLoader() = default;

void ProcessPictureLoader::Load(const std::string& file, std::int32_t width, std::int32_t height, Done done) {
  const auto side = [](std::int32_t pixels) { return std::clamp(pixels, 1, kMostPixelsASide); };
  Drop();
  run_.reset(new Run{{file, side(width), side(height)}, std::move(done)});
  Begin();
}

void ProcessPictureLoader::Drop() {
  std::erase_if(dropped_, [](const Dropped& dropped) { return IsOver(dropped.process); });
  if (run_) {
    dropped_.push_back({run_->process.get(), {}});
    dropped_.back().since.start();
  }
  run_.reset();
}

bool ProcessPictureLoader::IsStuck() const {
  // Many may have ended of which only the events to come will tell.
  const auto hangs = [this](const Dropped& dropped) {
    return !IsOver(dropped.process) && dropped.since.elapsed() >= ending_.count();
  };
  return static_cast<std::size_t>(std::ranges::count_if(dropped_, hangs)) >= kMostHangingHelpers;
}

void ProcessPictureLoader::Begin() {
  QProcess* const process = run_->process.get();
  QTimer* const limit = &run_->limit;
  QObject::connect(limit, &QTimer::timeout, limit, [this] { End(nullptr); });
  QObject::connect(process, &QProcess::readyReadStandardOutput, limit, [this] { TakeOutput(); });
  QObject::connect(process, &QProcess::finished, limit, [this](int status, QProcess::ExitStatus way) {
    const bool well = way == QProcess::NormalExit && status == 0;
    End(well ? DecodePictureAnswer(run_->answer, run_->asked) : nullptr);
  });
  // A failed start may be told from within start().
  const auto failed = [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) End(nullptr);
  };
  QObject::connect(process, &QProcess::errorOccurred, limit, failed, Qt::QueuedConnection);
  limit->start(limit_);
  process->setStandardErrorFile(QProcess::nullDevice());
  process->start(QFile::decodeName(helper_.c_str()), {});
  process->write(QByteArray::fromStdString(EncodePictureRequest(run_->asked)));
  process->closeWriteChannel();
}

void ProcessPictureLoader::TakeOutput() {
  run_->answer += run_->process->readAllStandardOutput().toStdString();
  if (!PictureAnswerSize(run_->answer, run_->asked)) End(nullptr);
}

void ProcessPictureLoader::End(SharedImage picture) {
  const Done done = std::move(run_->done);
  Drop();
  done(std::move(picture));  // may begin the next load, or destroy this loader
}

}  // namespace tresmor
