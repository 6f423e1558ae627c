// A started program and all that it starts; posix/ and windows/ each have their own way.
#pragma once

#include <QProcess>
#include <QString>
#include <memory>

namespace mw {

// The program that runs the file at the path: itself, or one that is handed the path; empty when
// there is none.
QString RunnerOf(const QString& path);

// Before the start: what the process starts can be ended with it.
void LeadGroup(QProcess& process);

// Ends all processes of a group: asks them to where the system can, and does not wait long for an
// answer.
class GroupEnd {
 public:
  // `leader` is the number of the process that is started.
  explicit GroupEnd(qint64 leader);
  // When the first of them has ended, nothing is left for the others to do.
  ~GroupEnd();
  void Ask();
  bool IsAsked() const { return asked_; }

 private:
  struct Group;
  std::unique_ptr<Group> group_;
  bool asked_ = false;
};

}  // namespace mw
