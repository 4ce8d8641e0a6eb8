#include "tav_parametervrscene.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>

#include "tav_error.h"
#include "tav_values.h"
#include "tav_virtualitemparameter.h"
#include "tav_virtualitemwait.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parametervrscene"};

constexpr unsigned char kStopped = 0;
constexpr unsigned char kPlayOnce = 1;
constexpr unsigned char kPlayRepeatedly = 2;

constexpr std::array<tavValueWord, 6> kCommands = {
    {{"stop", "0"}, {"once", "1"}, {"repeat", "2"}, {"0", "0"}, {"1", "1"}, {"2", "2"}}};

constexpr unsigned int kShortestWait = 10;  // ms
constexpr unsigned int kPause = 100;        // ms, after a play
constexpr unsigned long kStackSize = 524288;

// Counts one more for a scope.
class ScopedCount {
 public:
  explicit ScopedCount(unsigned int& count) : m_count(count) { ++m_count; }
  ~ScopedCount() { --m_count; }
  ScopedCount(const ScopedCount&) = delete;
  ScopedCount& operator=(const ScopedCount&) = delete;

 private:
  unsigned int& m_count;
};

// The item as an object of its kind; null if it is of another.
template <class Item>
Item* ItemAs(tavEVirtualItem kind, tavIVirtualItem& item) {
  return item.GetType() == kind ? dynamic_cast<Item*>(&item) : nullptr;
}

}  // namespace

// A play, from before its first item to after its last. Items that are discarded meanwhile live until it
// ends, so that the one that is executing may discard them.
class tavParameterVRScene::Play {
 public:
  explicit Play(tavParameterVRScene& scene) : m_scene(scene) {}
  ~Play() {
    Items discarded;  // outlives the lock: an item may take locks of its own when it goes
    const tavSMutex lock(&m_scene.m_lock);
    m_scene.m_isPlaying = false;
    discarded.Swap(m_scene.m_discarded);
  }
  Play(const Play&) = delete;
  Play& operator=(const Play&) = delete;

  // The item to execute now; null when the play is over. The first call begins the play.
  tavIVirtualItem* Next() {
    const tavSMutex lock(&m_scene.m_lock);
    if (m_item == nullptr) {
      m_scene.m_isPlaying = true;
      m_interruptions = m_scene.m_interruptions;
      m_isOnThread = m_scene.m_usesThread;
    }
    if (m_scene.m_thread.MustEnd() || m_scene.m_interruptions != m_interruptions) return nullptr;
    const unsigned char value = m_isOnThread ? m_scene.Value()[0] : kPlayOnce;
    if (value == kStopped) return nullptr;
    m_item = m_item == nullptr ? m_scene.m_items.first : m_item->GetNext();
    if (m_item == nullptr && value == kPlayRepeatedly) m_item = m_scene.m_items.first;
    m_isFinished = m_item == nullptr;
    // A stop either was seen above or ends the wait that is about to begin.
    if (auto* const wait = dynamic_cast<tavVirtualItemWait*>(m_item)) wait->Prepare();
    return m_item;
  }

  // True if the play was over because it came to the end of the items.
  bool IsFinished() const { return m_isFinished; }

 private:
  tavParameterVRScene& m_scene;
  unsigned int m_interruptions = 0;  // when it began
  bool m_isOnThread = false;         // otherwise it does not look at the value
  tavIVirtualItem* m_item = nullptr;
  bool m_isFinished = false;
};

tavParameterVRScene::Items::~Items() {
  while (first != nullptr) {
    const std::unique_ptr<tavIVirtualItem> item(first);
    first = item->GetNext();
  }
}

void tavParameterVRScene::Items::Append(tavIVirtualItem* item) {
  if (item == nullptr) return;
  if (last == nullptr) {
    first = item;
  } else {
    // The last item may have brought others with it.
    while (tavIVirtualItem* const next = last->GetNext()) last = next;
    last->SetNext(item);
  }
  last = item;
}

void tavParameterVRScene::Items::Swap(Items& other) {
  std::swap(first, other.first);
  std::swap(last, other.last);
}

unsigned char tavParameterVRScene::NonThreadParametersCount = 2;

const tavParameterType tavParameterVRScene::Type{
    .id = tavObject_ParameterVRScene,
    .name = TypeName,
    .source = "tav_parametervrscene",
    .size = 1,
    .encode = WriteByte,
    .toText = ByteText,
    .compare = CompareBytes,
    .syntax = {.form = tavValueForm_Words, .words = kCommands},
    .isCommand = true,
    .lines = {
        .noBuffer = 28, .setDataFromString = 44, .setDataValue = 90, .getDataValue = 94, .comparison = 148}};

tavParameterVRScene::tavParameterVRScene() : tavTypedParameter(Type) {}

tavParameterVRScene::~tavParameterVRScene() { delete_scene(); }

tavEError tavParameterVRScene::BuildScene_Begin() {
  {
    const tavSMutex lock(&m_lock);
    m_isBuilding = true;
  }
  delete_scene();
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_AddWait(const unsigned int& ms) {
  const tavSMutex lock(&m_lock);
  if (!m_isBuilding) {
    return kReport(tavError_OperationFailed, "You musy to call BuildScene_Begin", {200});
  }
  if (ms < kShortestWait) {
    return kReport(tavError_InvalidArgument, "The smallest wait time must be 10 ms", {201});
  }
  std::unique_ptr<tavVirtualItemWait> wait(new (std::nothrow) tavVirtualItemWait);
  if (!wait) return kReport(tavError_OutOfMemory, "pWait == 0", {204});
  wait->SetWaitTime(ms);
  add_as_last(wait.release());
  m_usesThread = true;
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_AddSetParameter(tavIParameter* pPrm, const unsigned char* pBuffer,
                                                          const unsigned int& size) {
  const tavSMutex lock(&m_lock);
  if (!m_isBuilding) {
    return kReport(tavError_OperationFailed, "You musy to call BuildScene_Begin", {213});
  }
  if (pPrm == nullptr) return kReport(tavError_InvalidArgument, "pPrm == 0", {214});
  if (pBuffer == nullptr || size == 0) {
    return kReport(tavError_InvalidArgument, "pBuffer == 0 || size == 0", {215});
  }
  std::unique_ptr<tavVirtualItemParameter> item(new (std::nothrow) tavVirtualItemParameter);
  if (!item) return kReport(tavError_OutOfMemory, "pVprm == 0", {218});
  if (item->SetParameter(pPrm, pBuffer, size) != tavError_NoError) {
    return kReport(tavError_OperationFailed, "Can not set parameter as virtual item", {220});
  }
  add_as_last(item.release());
  if (!m_usesThread) m_usesThread = HasMoreItemsThan(NonThreadParametersCount);
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_End() {
  const tavSMutex lock(&m_lock);
  m_isBuilding = false;
  if (!m_usesThread) {
    kReport(tavError_NoError, "tavParameterVRScene do not use Thread for play", {193});
    return tavError_NoError;
  }
  switch (m_thread.Start(thread_procedure, this, kStackSize)) {
    case tavThreadStart::Started:
      break;
    case tavThreadStart::NoMemory:
      return kReport(tavError_OutOfMemory, "Can not create thread for tavParameterVRScene", {184});
    case tavThreadStart::Failed:
      return kReport(tavError_OperationFailed, "Can not start thread for tavParameterVRScene", {189});
  }
  return tavError_NoError;
}

bool tavParameterVRScene::UseThread() const {
  const tavSMutex lock(&m_lock);
  return m_usesThread;
}

void tavParameterVRScene::SetValue(unsigned char value) { SetBytes({std::min(value, kPlayRepeatedly)}); }

void tavParameterVRScene::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  tavTypedParameter::SetData(data, size, flag);
  const tavSMutex lock(&m_lock);
  if (m_usesThread) {
    if (Value()[0] == kStopped) {
      ++m_interruptions;
      EndWaits();
    } else {
      m_playEvent.Signal();
    }
    // Only a thread that waits now sees the request: requests do not queue up behind a play. The
    // signal that ends a thread must stay.
    if (!m_thread.MustEnd()) m_playEvent.Reset();
    return;
  }
  // A play at once holds the lock. So if one is under way here, this call comes from one of its own items or
  // hooks, and must not start it again.
  if (Value()[0] == kPlayOnce && m_items.first != nullptr && !m_isPlaying) PlayAtOnce();
}

tavString tavParameterVRScene::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavTypedParameter::SerializeParametersAsXml();
  xml.append("<scene>");
  for (tavIVirtualItem* item = m_items.first; item != nullptr; item = item->GetNext()) {
    if (const auto* const wait = ItemAs<tavVirtualItemWait>(tavVirtualItem_Wait, *item)) {
      xml.append("<wait ms_time=\"").append(tavString::FromULong(wait->GetWaitTime()));
      xml.append("\"></wait>");
    } else if (const auto* const setting =
                   ItemAs<tavVirtualItemParameter>(tavVirtualItem_SetParameter, *item);
               setting != nullptr && setting->GetParameter() != nullptr) {
      const tavIParameter& target = *setting->GetParameter();
      xml.append("<set id=\"").append(tavString::FromULong(target.GetUniqueID()));
      xml.append("\" val=\"").append(target.ValueToString()).append("\"></set>");
    }
  }
  xml.append("</scene>");
  return xml;
}

// The value stays as it is, so that a stop or an end of the play that comes meanwhile is not undone.
void tavParameterVRScene::RepeatRequest() {
  const tavSMutex lock(&m_lock);
  if (!m_usesThread || Value()[0] == kStopped || m_thread.MustEnd()) return;
  m_playEvent.Signal();
  m_playEvent.Reset();
}

void tavParameterVRScene::term_thread() {
  {
    const tavSMutex lock(&m_lock);
    if (!m_thread.AskToEnd()) return;
    m_playEvent.Signal();
    EndWaits();
    // A hook or item of a play at once calls. That play holds the lock, which the thread needs to end.
    // The next caller that ends the thread waits for it.
    if (m_playsAtOnce != 0) return;
  }
  m_thread.WaitForEnd();
  m_playEvent.Reset();
}

void tavParameterVRScene::delete_scene() {
  term_thread();
  Items discarded;  // outlives the lock: an item may take locks of its own when it goes
  const tavSMutex lock(&m_lock);
  ++m_interruptions;
  discarded.Swap(m_items);
  if (!m_isPlaying) return;
  m_discarded.Append(std::exchange(discarded.first, nullptr));
}

void tavParameterVRScene::add_as_last(tavIVirtualItem* item) {
  const tavSMutex lock(&m_lock);
  m_items.Append(item);
}

bool tavParameterVRScene::HasMoreItemsThan(unsigned int count) const {
  tavIVirtualItem* item = m_items.first;
  while (item != nullptr && count-- > 0) item = item->GetNext();
  return item != nullptr;
}

// An item that throws does not keep the others waiting.
void tavParameterVRScene::EndWaits() const {
  for (tavIVirtualItem* item = m_items.first; item != nullptr; item = item->GetNext()) {
    tavWorkerThread::Guard([item] { item->ExitExecute(); });
  }
}

void tavParameterVRScene::TellOfSetting(tavIVirtualItem& executed) {
  if (const auto* const setting = ItemAs<tavVirtualItemParameter>(tavVirtualItem_SetParameter, executed)) {
    OnParameterSet(setting->GetParameter());
  }
}

void tavParameterVRScene::PlayOnThread() {
  bool isFinished = false;
  tavWorkerThread::Guard([&] {
    Play play(*this);
    while (tavIVirtualItem* const item = play.Next()) {
      tavWorkerThread::Guard([&] { item->Execute(); });
      tavWorkerThread::Guard([&] { TellOfSetting(*item); });
    }
    isFinished = play.IsFinished();
  });
  if (!isFinished) return;
  tavWorkerThread::Guard([&] { SetBytes({kStopped}); });
  tavWorkerThread::Guard([&] { OnPlayFinish(); });
}

// Plays on the thread that sets the value, with the lock held.
void tavParameterVRScene::PlayAtOnce() {
  const ScopedCount holdsLock(m_playsAtOnce);
  {
    Play play(*this);
    while (tavIVirtualItem* const item = play.Next()) {
      item->Execute();
      TellOfSetting(*item);
    }
    if (!play.IsFinished()) return;
  }
  SetBytes({kStopped});
  OnPlayFinish();
}

void tavParameterVRScene::thread_procedure(VThread* thread, void* scene) {
  auto& self = *static_cast<tavParameterVRScene*>(scene);
  while (!self.m_thread.MustEnd()) {
    self.m_playEvent.Wait();
    if (self.m_thread.MustEnd()) break;
    self.PlayOnThread();
    self.m_playEvent.Reset();
    if (!thread->WaitContinue(kPause)) break;
  }
  self.m_playEvent.Reset();
}

tavEError tavParameterVRScene::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterVRScene::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
