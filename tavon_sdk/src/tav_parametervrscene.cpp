#include "tav_parametervrscene.h"

#include <algorithm>
#include <array>
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

// A flag that is set for a scope.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : m_flag(flag) { m_flag = true; }
  ~ScopedFlag() { m_flag = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& m_flag;
};

}  // namespace

// Owner of the list of items. A play shares the ownership, so that the executing item lives until it returns
// even if it deletes the items of its scene.
struct tavParameterVRScene::Items {
  Items() = default;
  ~Items() {
    while (first != nullptr) {
      const std::unique_ptr<tavIVirtualItem> item(first);
      first = item->GetNext();
    }
  }
  Items(const Items&) = delete;
  Items& operator=(const Items&) = delete;

  tavIVirtualItem* first = nullptr;
  tavIVirtualItem* last = nullptr;  // where the next is appended
};

// An item and its kind, which is asked for once. At most one of the two pointers is set.
struct tavParameterVRScene::Step {
  explicit Step(tavIVirtualItem& stepItem) : item(stepItem) {
    switch (item.GetType()) {
      case tavVirtualItem_Wait:
        wait = dynamic_cast<tavVirtualItemWait*>(&item);
        break;
      case tavVirtualItem_SetParameter:
        setting = dynamic_cast<tavVirtualItemParameter*>(&item);
        break;
      default:
        break;
    }
  }

  tavIVirtualItem& item;
  tavVirtualItemWait* wait = nullptr;
  tavVirtualItemParameter* setting = nullptr;
};

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
  std::unique_ptr<tavVirtualItemWait> wait = MakeItem<tavVirtualItemWait>();
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
  std::unique_ptr<tavVirtualItemParameter> item = MakeItem<tavVirtualItemParameter>();
  if (!item) return kReport(tavError_OutOfMemory, "pVprm == 0", {218});
  if (item->SetParameter(pPrm, pBuffer, size) != tavError_NoError) {
    return kReport(tavError_OperationFailed, "Can not set parameter as virtual item", {220});
  }
  add_as_last(item.release());
  if (HasMoreThan(NonThreadParametersCount)) m_usesThread = true;
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
    if (m_value[0] == kStopped) {
      EndWaits();
    } else {
      m_playEvent.Signal();
    }
    // Only a thread that waits now sees the request, on purpose: requests do not queue up behind a play. The
    // signal that ends a thread must stay.
    if (!m_thread.MustEnd()) m_playEvent.Reset();
    return;
  }
  // A play at once holds the lock. So if one is under way here, this call comes from one of its own items or
  // hooks, and must not start it again.
  if (m_value[0] == kPlayOnce && FirstItem() != nullptr && !m_isPlayingAtOnce) PlayAtOnce();
}

tavString tavParameterVRScene::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavTypedParameter::SerializeParametersAsXml();
  xml.append("<scene>");
  for (tavIVirtualItem* item = FirstItem(); item != nullptr; item = item->GetNext()) {
    const Step step(*item);
    if (step.wait != nullptr) {
      xml.append("<wait ms_time=\"").append(tavString::FromULong(step.wait->GetWaitTime()));
      xml.append("\"></wait>");
    } else if (step.setting != nullptr && step.setting->GetParameter() != nullptr) {
      const tavIParameter& target = *step.setting->GetParameter();
      xml.append("<set id=\"").append(tavString::FromULong(target.GetUniqueID()));
      xml.append("\" val=\"").append(target.ValueToString()).append("\"></set>");
    }
  }
  xml.append("</scene>");
  return xml;
}

void tavParameterVRScene::term_thread() {
  {
    const tavSMutex lock(&m_lock);
    if (!m_thread.AskToEnd()) return;
    m_playEvent.Signal();
    EndWaits();
  }
  m_thread.WaitForEnd();
  m_playEvent.Reset();
}

void tavParameterVRScene::delete_scene() {
  term_thread();
  std::shared_ptr<Items> deleted;  // outlives the lock: an item may take locks of its own when it goes
  const tavSMutex lock(&m_lock);
  if (m_items.use_count() > 1) EndWaits();
  deleted.swap(m_items);
}

void tavParameterVRScene::add_as_last(tavIVirtualItem* item) {
  if (item == nullptr) return;
  std::unique_ptr<tavIVirtualItem> owner(item);
  const tavSMutex lock(&m_lock);
  if (!m_items) m_items = std::make_shared<Items>();
  if (m_items->last == nullptr) {
    m_items->first = owner.release();
  } else {
    // An item may have brought others with it.
    while (tavIVirtualItem* const next = m_items->last->GetNext()) m_items->last = next;
    m_items->last->SetNext(owner.release());
  }
  m_items->last = item;
}

// Makes an item, and first the list, so that appending the item cannot fail. Null without memory.
template <class Item>
std::unique_ptr<Item> tavParameterVRScene::MakeItem() {
  try {
    if (!m_items) m_items = std::make_shared<Items>();
    return std::make_unique<Item>();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

tavIVirtualItem* tavParameterVRScene::FirstItem() const { return m_items ? m_items->first : nullptr; }

bool tavParameterVRScene::HasMoreThan(unsigned int count) const {
  tavIVirtualItem* item = FirstItem();
  while (item != nullptr && count-- > 0) item = item->GetNext();
  return item != nullptr;
}

// An item that throws does not keep the others waiting.
void tavParameterVRScene::EndWaits() {
  for (tavIVirtualItem* item = FirstItem(); item != nullptr; item = item->GetNext()) {
    tavWorkerThread::Guard([item] { item->ExitExecute(); });
  }
}

void tavParameterVRScene::ExecuteStep(const Step& step) {
  step.item.Execute();
  if (step.setting != nullptr) OnParameterSet(step.setting->GetParameter());
}

// True if a play of these items is to go on: it was not stopped, and the scene still has them.
bool tavParameterVRScene::IsPlaying(const std::shared_ptr<Items>& items) const {
  const tavSMutex lock(&m_lock);
  return !m_thread.MustEnd() && m_value[0] != kStopped && m_items == items;
}

// True if the play is to go on with an item. A wait is announced in the same step, so that a stop either is
// seen here or ends the wait that is about to begin.
bool tavParameterVRScene::MayExecute(const std::shared_ptr<Items>& items, const Step& step) const {
  const tavSMutex lock(&m_lock);
  if (!IsPlaying(items)) return false;
  if (step.wait != nullptr) step.wait->Prepare();
  return true;
}

// Plays again and again while the value says so. True if a single play came to its end.
bool tavParameterVRScene::PlayItems(const std::shared_ptr<Items>& items) {
  tavIVirtualItem* const first = items ? items->first : nullptr;
  do {
    for (tavIVirtualItem* item = first; item != nullptr; item = item->GetNext()) {
      const Step step(*item);
      if (!MayExecute(items, step)) return false;
      tavWorkerThread::Guard([&] { ExecuteStep(step); });
    }
  } while (first != nullptr && GetValue() == kPlayRepeatedly);
  return IsPlaying(items);  // a stop during the last item is a stop, too
}

void tavParameterVRScene::PlayOnThread() {
  std::shared_ptr<Items> items;
  {
    const tavSMutex lock(&m_lock);
    if (m_value[0] == kStopped) return;
    items = m_items;
  }
  bool isFinished = false;
  tavWorkerThread::Guard([&] { isFinished = PlayItems(items); });
  if (!isFinished) return;
  tavWorkerThread::Guard([&] { SetBytes({kStopped}); });
  tavWorkerThread::Guard([&] { OnPlayFinish(); });
}

// Plays on the thread that sets the value, with the lock held.
void tavParameterVRScene::PlayAtOnce() {
  const ScopedFlag playing(m_isPlayingAtOnce);
  const std::shared_ptr<Items> items = m_items;
  for (tavIVirtualItem* item = items->first; item != nullptr; item = item->GetNext()) {
    ExecuteStep(Step(*item));
    if (m_items != items) return;  // the scene was rebuilt or deleted: the rest is dropped
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
