#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tav_error.h"
#include "tav_event.h"
#include "tav_parameter.h"

namespace tavon {

// The parameters of a house by their ids, for a server: gives them events, takes over what has changed, and
// keeps their values over a restart.
//
// Any thread may call any operation. The house locks itself only while it looks into its list, never while it
// calls a parameter, a hook or a call-back; all of these may therefore use the house. Only Save holds a lock
// while it reads the parameters and waits for the disk: do not call it in a hook that runs with a parameter's
// lock held.
//
// Parameters are visited in the order in which they were added, and destroyed in the reverse order: add a
// parameter before what refers to it, such as the switch that drives it or the scene that sets it.
class tavHouse {
 public:
  // What became of an event.
  enum class Result { Applied, NoSuchParameter, NoValue };

  // Called with a parameter.
  using Visitor = std::function<void(tavIParameter&)>;

  tavHouse() = default;
  // Ends the threads of the parameters that the house owns, and then destroys these. Do not destroy the house
  // while a thread other than those uses it.
  ~tavHouse();
  tavHouse(const tavHouse&) = delete;
  tavHouse& operator=(const tavHouse&) = delete;

  // Adds a parameter under the id that it has now, which must not change any more. The first form also owns
  // it. One that lives elsewhere must outlive the house, or its removal and what other threads were doing
  // with it then.
  //
  // 0, or a reported code (6) if the id is taken or the pointer is null; the house is then as it was.
  tavEError Add(std::shared_ptr<tavIParameter> parameter);
  tavEError Add(tavIParameter& parameter) { return Add({std::shared_ptr<void>(), &parameter}); }

  // Makes a parameter of a class, names it, and adds it. Null after a report if the id is taken.
  template <class Parameter, class... Arguments>
  Parameter* Make(unsigned int id, const wchar_t* name, Arguments&&... arguments) {
    const auto parameter = std::make_shared<Parameter>(std::forward<Arguments>(arguments)...);
    parameter->SetUniqueID(id);
    parameter->SetName(name);
    return Add(parameter) == tavError_NoError ? parameter.get() : nullptr;
  }

  // The parameter with an id, or null. The result keeps a parameter that the house owns alive.
  std::shared_ptr<tavIParameter> Find(unsigned int id) const;

  // Takes a parameter out of the house and returns it; null if there is none. Before it goes, end its thread
  // with term_thread, as a hook on it may be visiting the house, and the links and scenes that refer to it.
  std::shared_ptr<tavIParameter> Remove(unsigned int id);

  // Calls the visitor with each parameter that is in the house when the visit begins.
  void Visit(const Visitor& visitor) const;

  // Gives the value of an event to its parameter. What the event does not carry stays as it is.
  Result Apply(const tavEvent& event);

  // Acknowledges all changes: for each dirty parameter calls the call-back, if there is one, and makes the
  // parameter clean, so that the rules of its link fire. Returns how many there were.
  // Links and scenes make others dirty: call it again soon unless the result is 0.
  //
  // A scene may miss the request to play; it is repeated here as long as the scene's value asks for it, so
  // that setting the value is enough. A stop meanwhile ends that, and a request during a play is not kept.
  //
  // A value that changes after the call-back and before the parameter is clean is not missed: the call-back
  // is called once more.
  unsigned int TakeOver(const Visitor& changed = nullptr);

  // Save writes the values to a file, and Restore sets them as they were, byte by byte. Values are states; a
  // command (shutter, scenes, alert) is neither saved nor restored, because it would be given again.
  //
  // Save replaces the file by a complete new one that is on the disk, or leaves it as it was: neither a crash
  // nor a full disk damages it. 0, or the reported code (1) of a failure.
  //
  // Restore leaves no restored parameter dirty and fires no link: what links have set is in the file as well,
  // or has been set by somebody since. It does call the virtual SetData, so a schedule that is active applies
  // the set-point of the present hour, a colour calls OnRGBValue, and the safe time of a switch with release
  // starts anew. Call it before other threads use the parameters, and after the safe times are set.
  //
  // A line that does not fit is reported with its number (code 6) and skipped: one that cannot be read, whose
  // parameter is missing or of another type, or whose value has another size. A file of another version is
  // reported and skipped as a whole, and one that cannot be read is reported with code 1. Returns 0 or the
  // last reported code. A missing file is no failure: the house starts for the first time.
  //
  // The file is text that a person can read and edit, with one parameter per line: id, type, name in quotes,
  // and value, which is hexadecimal bytes or a text in quotes. In quotes, a backslash precedes a quote,
  // another backslash, or an x and the two hexadecimal digits of any byte. Text after a # is a comment.
  //
  //   ura-house 1
  //   1 ParameterSwitch "Lamp" 01 # 1
  //   8 ParameterInfo "Door" "Welcome"
  tavEError Save(const tavString& path) const;
  tavEError Restore(const tavString& path);

 private:
  struct Entry {
    unsigned int id;
    std::shared_ptr<tavIParameter> parameter;
  };
  using Entries = std::vector<Entry>;
  class Reading;

  Entries& Writable();

  mutable vMutex m_lock;
  mutable vMutex m_saveLock;
  std::unordered_map<unsigned int, std::shared_ptr<tavIParameter>> m_byId;
  // In the order of adding. Code that reads it without the lock shares its ownership and counts as a reader;
  // it is changed in place only while there is none.
  std::shared_ptr<Entries> m_entries = std::make_shared<Entries>();
  mutable unsigned int m_readers = 0;
};

}  // namespace tavon
