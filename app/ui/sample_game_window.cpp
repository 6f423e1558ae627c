#include "app/ui/sample_game_window.h"

#include <QCoreApplication>
#include <QDialog>
#include <QProcess>
#include <QStandardPaths>

#include "ui_212_sample_game.h"

namespace mw {
namespace {

// Empty when it is not beside the program.
QString WriterPath() {
  return QStandardPaths::findExecutable("make_sample", {QCoreApplication::applicationDirPath()});
}

class SampleGameWindow : public QDialog {
 public:
  explicit SampleGameWindow(QWidget* owner) : QDialog(owner) {
    form_.setupUi(this);
    connect(form_.cancelButton, &QPushButton::clicked, this, [this] { reject(); });
    connect(&writer_, &QProcess::readyReadStandardOutput, this, [this] { ShowProgress(); });
    connect(&writer_, &QProcess::finished, this, [this] { done(Accepted); });
    connect(&writer_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) done(Accepted);
    });
  }
  ~SampleGameWindow() override { End(); }

  SampleGameWriting Write(const QStringList& words) {
    writer_.start(WriterPath(), words, QIODevice::ReadOnly);
    // A program that cannot be started may be over at once, before the window opens.
    if (writer_.state() != QProcess::NotRunning) exec();
    return Ending();
  }

  void reject() override {
    cancelled_ = true;
    End();
    QDialog::reject();
  }

 private:
  static std::string Text(const QString& text) { return text.toStdString(); }

  SampleGameWriting Ending() {
    if (cancelled_) return {};
    if (writer_.error() == QProcess::FailedToStart) return {false, Text(writer_.errorString())};
    if (writer_.exitStatus() == QProcess::NormalExit && writer_.exitCode() == 0) return {true, {}};
    const QString said = QString::fromUtf8(writer_.readAllStandardError()).trimmed();
    return {false, Text(said.isEmpty() ? "The program that writes it has stopped." : said)};
  }

  // What is cancelled may end at once: nothing that it has written is used.
  void End() {
    if (writer_.state() == QProcess::NotRunning) return;
    writer_.disconnect(this);
    writer_.kill();
    writer_.waitForFinished();
  }

  // A line is a percentage and the file that is being written.
  void ShowProgress() {
    while (writer_.canReadLine()) {
      const QString line = QString::fromUtf8(writer_.readLine()).trimmed();
      form_.progressBar->setValue(line.section(' ', 0, 0).toInt());
      form_.activityText->setText("Writing the sample game: " + line.section(' ', 1));
    }
  }

  Ui::SampleGameForm form_;
  QProcess writer_;
  bool cancelled_ = false;
};

}  // namespace

bool HasSampleGameWriter() { return !WriterPath().isEmpty(); }

SampleGameWriting WriteSampleGame(QWidget* owner, const std::string& game,
                                  const std::string& work) {
  return SampleGameWindow(owner).Write(
      {QString::fromStdString(game), QString::fromStdString(work), "--progress"});
}

}  // namespace mw
