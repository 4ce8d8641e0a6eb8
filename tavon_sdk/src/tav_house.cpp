#include "tav_house.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "dro_error.h"
#include "shared/vfile.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametertype.h"
#include "tav_parametervrscene.h"
#include "tav_savedparameter.h"
#include "vtext.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_house"};

// The first line of a file.
constexpr const char* kVersion = "ura-house 1";

constexpr unsigned char kDirty = 1;

// The longest value, in bytes, whose text is added to its line as a remark.
constexpr std::size_t kLongestRemarked = 4;

bool IsCommand(const tavIParameter& parameter) {
  const auto* const typed = dynamic_cast<const tavTyped*>(&parameter);
  return typed != nullptr && typed->GetTypeRecord().isCommand;
}

bool IsText(const tavIParameter& parameter) {
  const auto* const typed = dynamic_cast<const tavTyped*>(&parameter);
  return typed != nullptr && typed->GetTypeRecord().IsText();
}

std::string ValueOf(const tavIParameter& parameter) {
  if (IsText(parameter)) return parameter.ValueToString();  // its data would have a zero at the end
  std::string value(parameter.GetDataSize(), '\0');
  parameter.GetDataCopy(reinterpret_cast<unsigned char*>(value.data()));
  return value;
}

std::string NameOf(const tavIParameter& parameter) {
  try {
    return tavString::AsUTF8(parameter.GetName());
  } catch (const std::exception&) {
    return "?";  // it has a character that does not exist, and the value counts for more
  }
}

std::string LineOf(unsigned int id, const tavIParameter& parameter) {
  const bool isText = IsText(parameter);
  tavSavedParameter saved{.id = id,
                          .type = parameter.GetTypeName(),
                          .name = NameOf(parameter),
                          .value = ValueOf(parameter),
                          .remark = {}};
  if (!isText && saved.value.size() <= kLongestRemarked) saved.remark = parameter.ValueToString();
  return saved.Line(isText);
}

// The results of these are 0 or an errno.

int WriteToDisk(const char* path, const std::string& text) {
  vlib::File file = vlib::OpenFile(path, "we");
  if (!file) return errno;
  if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) return errno;
  if (std::fflush(file.get()) != 0 || fsync(fileno(file.get())) != 0) return errno;
  return std::fclose(file.release()) == 0 ? 0 : errno;
}

// The name of a file is on the disk when its folder is.
int WriteFolderToDisk(const char* path) {
  std::string folder = std::filesystem::path(path).parent_path();
  if (folder.empty()) folder = ".";
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  const int error = fsync(descriptor) == 0 ? 0 : errno;
  close(descriptor);
  return error == EINVAL ? 0 : error;  // a file system that cannot do that
}

int ReplaceOnDisk(const char* path, const std::string& text) {
  const std::string written = std::string(path) + ".new";
  int error = WriteToDisk(written.c_str(), text);
  if (error == 0 && std::rename(written.c_str(), path) != 0) error = errno;
  if (error == 0) return WriteFolderToDisk(path);
  unlink(written.c_str());
  return error;
}

int ReadFile(const char* path, std::string& o_text) {
  const vlib::File file = vlib::OpenFile(path, "re");
  if (!file) return errno;
  char part[4096];
  while (const std::size_t size = std::fread(part, 1, sizeof part, file.get())) o_text.append(part, size);
  return std::ferror(file.get()) == 0 ? 0 : errno;
}

void EndThread(tavIParameter& parameter) {
  if (auto* const shutter = parameter.GetParameterShutterPtr()) shutter->term_thread();
  if (auto* const release = parameter.GetParameterSwitchReleasePtr()) release->term_thread();
  if (auto* const week = parameter.GetParameterThermoChronoWeekPtr()) week->term_thread();
  if (auto* const scene = parameter.GetParameterVRScenePtr()) scene->term_thread();
}

// Restores the parameter of a line. Returns what is wrong with the line, or nothing.
std::string RestoreLine(const tavHouse& house, std::string_view line) {
  const auto saved = tavSavedParameter::FromLine(line);
  if (!saved) return "not an id, a type, a name in quotes and a value";
  const std::string id = std::to_string(saved->id);
  const std::shared_ptr<tavIParameter> parameter = house.Find(saved->id);
  if (!parameter) return "no parameter has the id " + id;
  const std::string type = parameter->GetTypeName();
  if (type != saved->type) return "parameter " + id + " is a " + type + ", not a " + saved->type;
  if (IsCommand(*parameter)) return type + " is a command, which is not restored";

  const auto size = static_cast<unsigned int>(saved->value.size());
  if (!IsText(*parameter) && size != parameter->GetDataSize()) {
    return "the value of a " + type + " has " + std::to_string(parameter->GetDataSize()) + " bytes, not " +
           std::to_string(size);
  }
  if (size == 0) return {};  // the text that an information has until it gets one
  parameter->SetData(reinterpret_cast<const unsigned char*>(saved->value.data()), size, 1);
  parameter->RemoveFlags(kDirty);  // IsDirty(false) would fire its link
  return {};
}

}  // namespace

// The parameters as they are when the reading begins, to be visited without the lock.
class tavHouse::Reading {
 public:
  explicit Reading(const tavHouse& house) : m_house(house) {
    const tavSMutex lock(&m_house.m_lock);
    m_entries = m_house.m_entries;
    ++m_house.m_readers;
  }
  ~Reading() {
    const tavSMutex lock(&m_house.m_lock);
    --m_house.m_readers;
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  Entries::const_iterator begin() const { return m_entries->cbegin(); }
  Entries::const_iterator end() const { return m_entries->cend(); }

 private:
  const tavHouse& m_house;
  // Released after the lock: it may own the last share in a parameter that has been removed.
  std::shared_ptr<const Entries> m_entries;
};

// The list, to be changed with the lock held.
tavHouse::Entries& tavHouse::Writable() {
  if (m_readers != 0) m_entries = std::make_shared<Entries>(*m_entries);
  return *m_entries;
}

// Ends the threads first, while all is there: hooks that run on them may be using the house.
tavHouse::~tavHouse() {
  {
    const Reading reading(*this);
    for (auto entry = reading.end(); entry != reading.begin();) {
      --entry;
      if (entry->parameter.use_count() != 0) EndThread(*entry->parameter);
    }
  }
  m_byId.clear();
  while (!m_entries->empty()) m_entries->pop_back();
}

tavEError tavHouse::Add(std::shared_ptr<tavIParameter> parameter) {
  if (parameter == nullptr) return kReport(tavError_InvalidArgument, "parameter == 0");
  const unsigned int id = parameter->GetUniqueID();
  {
    const tavSMutex lock(&m_lock);
    Entries& entries = Writable();
    if (entries.size() == entries.capacity()) entries.reserve(2 * entries.size() + 8);
    if (m_byId.emplace(id, parameter).second) {
      entries.push_back({id, std::move(parameter)});
      return tavError_NoError;
    }
  }
  return kReport(tavError_InvalidArgument, "the house has a parameter " + tavString::FromULong(id));
}

std::shared_ptr<tavIParameter> tavHouse::Find(unsigned int id) const {
  const tavSMutex lock(&m_lock);
  const auto found = m_byId.find(id);
  return found == m_byId.end() ? nullptr : found->second;
}

std::shared_ptr<tavIParameter> tavHouse::Remove(unsigned int id) {
  const tavSMutex lock(&m_lock);
  const auto found = m_byId.find(id);
  if (found == m_byId.end()) return nullptr;
  Entries& entries = Writable();
  entries.erase(std::ranges::find(entries, id, &Entry::id));
  std::shared_ptr<tavIParameter> parameter = std::move(found->second);
  m_byId.erase(found);
  return parameter;
}

void tavHouse::Visit(const Visitor& visitor) const {
  for (const Reading reading(*this); const Entry& entry : reading) visitor(*entry.parameter);
}

// NOLINTBEGIN(readability-make-member-function-const): these change the parameters
tavHouse::Result tavHouse::Apply(const tavEvent& event) {
  const std::shared_ptr<tavIParameter> parameter = Find(event.GetId());
  if (!parameter) return Result::NoSuchParameter;
  const auto value = event.GetValue();
  if (value.empty()) return Result::NoValue;  // SetData would leave the parameter locked
  parameter->SetData(value.data(), static_cast<unsigned int>(value.size()), 0);
  return Result::Applied;
}

unsigned int tavHouse::TakeOver(const Visitor& changed) {
  unsigned int count = 0;
  Visit([&](tavIParameter& parameter) {
    if (auto* const scene = parameter.GetParameterVRScenePtr()) scene->RepeatRequest();
    if (!parameter.IsDirty()) return;
    ++count;
    if (!changed) return parameter.IsDirty(false);
    const std::string shown = ValueOf(parameter);
    changed(parameter);
    parameter.IsDirty(false);
    if (!parameter.IsDirty() && ValueOf(parameter) != shown) changed(parameter);
  });
  return count;
}

// NOLINTEND(readability-make-member-function-const)

tavEError tavHouse::Save(const tavString& path) const {
  const tavSMutex lock(&m_saveLock);  // one at a time writes
  std::string text = std::string(kVersion) + '\n';
  for (const Reading reading(*this); const Entry& entry : reading) {
    if (!IsCommand(*entry.parameter)) text += LineOf(entry.id, *entry.parameter);
  }
  const int error = ReplaceOnDisk(path.c_str(), text);
  if (error == 0) return tavError_NoError;
  return kReport(tavError_OperationFailed,
                 "Can not save the house in " + path + ": " + dro::droErrorStdToString(error));
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the parameters
tavEError tavHouse::Restore(const tavString& path) {
  std::string text;
  const int error = ReadFile(path.c_str(), text);
  if (error == ENOENT) return tavError_NoError;
  if (error != 0) {
    return kReport(tavError_OperationFailed,
                   "Can not restore the house from " + path + ": " + dro::droErrorStdToString(error));
  }
  tavEError result = tavError_NoError;
  unsigned int number = 0;
  bool isOurs = true;
  vlib::ForEachPiece(text, "\n", [&](std::string_view line, bool) {
    line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    std::string wrong;
    if (++number == 1) {
      isOurs = line == kVersion;
      if (!isOurs) wrong = std::string("not \"") + kVersion + "\"; nothing is restored";
    } else if (isOurs && !line.empty() && line.front() != '#') {
      wrong = RestoreLine(*this, line);
    }
    if (wrong.empty()) return;
    result = kReport(tavError_InvalidArgument, path + ":" + std::to_string(number) + ": " + wrong,
                     {__builtin_LINE(), "Restore"});
  });
  return result;
}

}  // namespace tavon
