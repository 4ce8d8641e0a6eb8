#include "tav_parametervrscene.h"

#include <algorithm>
#include <new>

#include "tav_parameterthread.h"
#include "tav_valueencoding.h"
#include "tav_virtualitemparameter.h"
#include "tav_virtualitemwait.h"

namespace tavon {
namespace {

constexpr unsigned char kBuilding = 1;
constexpr unsigned char kThreadMustEnd = 2;
constexpr unsigned char kUseThread = 8;

constexpr unsigned char kStopped = 0;
constexpr unsigned char kPlayOnce = 1;
constexpr unsigned char kPlayRepeatedly = 2;

constexpr unsigned int kShortestWait = 10;  // ms
constexpr unsigned int kPause = 100;        // ms, after a play
constexpr unsigned long kStackSize = 524288;

template <class Item>
std::unique_ptr<Item> MakeItem() {
  return std::unique_ptr<Item>(new (std::nothrow) Item);
}

}  // namespace

unsigned char tavParameterVRScene::NonThreadParametersCount = 2;

tavParameterVRScene::tavParameterVRScene() = default;

tavParameterVRScene::~tavParameterVRScene() { delete_scene(); }

tavEError tavParameterVRScene::BuildScene_Begin() {
  {
    const tavSMutex lock(&m_lock);
    m_flags |= kBuilding;
  }
  delete_scene();
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_AddWait(const unsigned int& ms) {
  const tavSMutex lock(&m_lock);
  if (!HasSceneFlag(kBuilding)) {
    return Report(tavError_OperationFailed, "You musy to call BuildScene_Begin", 200);
  }
  if (ms < kShortestWait) {
    return Report(tavError_InvalidArgument, "The smallest wait time must be 10 ms", 201);
  }
  std::unique_ptr<tavVirtualItemWait> wait = MakeItem<tavVirtualItemWait>();
  if (!wait) return Report(tavError_OutOfMemory, "pWait == 0", 204);
  wait->SetWaitTime(ms);
  add_as_last(wait.release());
  m_flags |= kUseThread;
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_AddSetParameter(tavIParameter* pPrm, const unsigned char* pBuffer,
                                                          const unsigned int& size) {
  const tavSMutex lock(&m_lock);
  if (!HasSceneFlag(kBuilding)) {
    return Report(tavError_OperationFailed, "You musy to call BuildScene_Begin", 213);
  }
  if (pPrm == nullptr) return Report(tavError_InvalidArgument, "pPrm == 0", 214);
  if (pBuffer == nullptr || size == 0) {
    return Report(tavError_InvalidArgument, "pBuffer == 0 || size == 0", 215);
  }
  std::unique_ptr<tavVirtualItemParameter> item = MakeItem<tavVirtualItemParameter>();
  if (!item) return Report(tavError_OutOfMemory, "pVprm == 0", 218);
  if (item->SetParameter(pPrm, pBuffer, size) != tavError_NoError) {
    return Report(tavError_OperationFailed, "Can not set parameter as virtual item", 220);
  }
  add_as_last(item.release());
  if (!UseThread() && HasMoreThan(NonThreadParametersCount)) m_flags |= kUseThread;
  return tavError_NoError;
}

tavEError tavParameterVRScene::BuildScene_End() {
  const tavSMutex lock(&m_lock);
  m_flags = static_cast<unsigned char>(m_flags & ~kBuilding);
  if (!UseThread()) {
    Report(tavError_NoError, "tavParameterVRScene do not use Thread for play", 193);
    return tavError_NoError;
  }
  if (m_thread) return tavError_NoError;
  switch (StartParameterThread(m_thread, thread_procedure, this, kStackSize)) {
    case tavThreadStart::Started:
      break;
    case tavThreadStart::NoMemory:
      return Report(tavError_OutOfMemory, "Can not create thread for tavParameterVRScene", 184);
    case tavThreadStart::Failed:
      return Report(tavError_OperationFailed, "Can not start thread for tavParameterVRScene", 189);
  }
  return tavError_NoError;
}

bool tavParameterVRScene::UseThread() const { return HasSceneFlag(kUseThread); }

void tavParameterVRScene::SetValue(unsigned char value) { SetByte(std::min(value, kPlayRepeatedly)); }

void tavParameterVRScene::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  tavByteParameter::SetData(data, size, flag);
  const tavSMutex lock(&m_lock);
  if (UseThread()) {
    if (m_value[0] == kStopped) {
      EndWaits();
    } else {
      m_playEvent.Signal();
    }
    // Only a thread that waits now has seen the request: intended. The signal that ends a thread must stay.
    if (!HasSceneFlag(kThreadMustEnd)) m_playEvent.Reset();
    return;
  }
  if (m_value[0] != kPlayOnce || m_firstItem == nullptr) return;
  for (tavIVirtualItem* item = m_firstItem; item != nullptr; item = item->GetNext()) ExecuteItem(*item);
  FinishPlay();
}

tavString tavParameterVRScene::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavByteParameter::SerializeParametersAsXml();
  xml.append("<scene>");
  for (tavIVirtualItem* item = m_firstItem; item != nullptr; item = item->GetNext()) {
    if (const auto* wait = dynamic_cast<const tavVirtualItemWait*>(item)) {
      xml.append("<wait ms_time=\"").append(tavString::FromULong(wait->GetWaitTime())).append("\"></wait>");
    } else if (const auto* setting = dynamic_cast<const tavVirtualItemParameter*>(item)) {
      const tavIParameter* target = setting->GetParameter();
      if (target == nullptr) continue;
      xml.append("<set id=\"").append(tavString::FromULong(target->GetUniqueID()));
      xml.append("\" val=\"").append(target->ValueToString()).append("\"></set>");
    }
  }
  xml.append("</scene>");
  return xml;
}

void tavParameterVRScene::term_thread() {
  tavSMutex lock(&m_lock);
  if (!m_thread) return;
  m_flags |= kThreadMustEnd;  // never taken back, and no other thread is made: it would end at its first test
  m_playEvent.Signal();
  EndWaits();
  lock.UnLock();
  m_thread->Stop();
  m_playEvent.Reset();
}

void tavParameterVRScene::delete_scene() {
  term_thread();
  const tavSMutex lock(&m_lock);
  m_lastItem = nullptr;
  while (m_firstItem != nullptr) {
    const std::unique_ptr<tavIVirtualItem> item(m_firstItem);
    m_firstItem = item->GetNext();
  }
}

void tavParameterVRScene::add_as_last(tavIVirtualItem* item) {
  if (item == nullptr) return;
  const tavSMutex lock(&m_lock);
  if (m_lastItem == nullptr) {
    m_firstItem = item;
  } else {
    // An item may have brought others with it.
    while (tavIVirtualItem* const next = m_lastItem->GetNext()) m_lastItem = next;
    m_lastItem->SetNext(item);
  }
  m_lastItem = item;
}

bool tavParameterVRScene::HasSceneFlag(unsigned char flag) const {
  const tavSMutex lock(&m_lock);
  return (m_flags & flag) != 0;
}

bool tavParameterVRScene::HasMoreThan(unsigned int count) const {
  tavIVirtualItem* item = m_firstItem;
  while (item != nullptr && count-- > 0) item = item->GetNext();
  return item != nullptr;
}

void tavParameterVRScene::EndWaits() {
  for (tavIVirtualItem* item = m_firstItem; item != nullptr; item = item->GetNext()) item->ExitExecute();
}

void tavParameterVRScene::ExecuteItem(tavIVirtualItem& item) {
  item.Execute();
  if (item.GetType() != 1) return;
  if (const auto* setting = dynamic_cast<const tavVirtualItemParameter*>(&item)) {
    OnParameterSet(setting->GetParameter());
  }
}

bool tavParameterVRScene::IsPlaying() const {
  const tavSMutex lock(&m_lock);
  return (m_flags & kThreadMustEnd) == 0 && m_value[0] != kStopped;
}

// Whether the play goes on with an item. Asked and announced in one step, so that a stop either is seen here
// or ends the wait that is about to begin.
bool tavParameterVRScene::MayExecute(tavIVirtualItem& item) const {
  const tavSMutex lock(&m_lock);
  if (!IsPlaying()) return false;
  if (auto* wait = dynamic_cast<tavVirtualItemWait*>(&item)) wait->Prepare();
  return true;
}

// Plays on the thread, again and again while the value says so. True when a single play came to its end.
bool tavParameterVRScene::PlayItems() {
  do {
    for (tavIVirtualItem* item = m_firstItem; item != nullptr; item = item->GetNext()) {
      if (!MayExecute(*item)) return false;
      try {
        ExecuteItem(*item);
      } catch (const tavError&) {
        // A log that throws its records: nobody is here to catch them, and the play goes on.
      }
    }
  } while (m_firstItem != nullptr && GetValue() == kPlayRepeatedly);
  return IsPlaying();  // a stop during the last item is a stop, too
}

void tavParameterVRScene::FinishPlay() {
  SetByte(kStopped);
  OnPlayFinish();
}

void tavParameterVRScene::thread_procedure(VThread* thread, void* scene) {
  auto& self = *static_cast<tavParameterVRScene*>(scene);
  while (!self.HasSceneFlag(kThreadMustEnd)) {
    self.m_playEvent.Wait();
    if (self.HasSceneFlag(kThreadMustEnd)) break;
    if (self.GetValue() != kStopped && self.PlayItems()) self.FinishPlay();
    self.m_playEvent.Reset();
    if (!thread->WaitContinue(kPause)) break;
  }
  self.m_playEvent.Reset();
}

tavEError tavParameterVRScene::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, 28, WriteByte);
}

}  // namespace tavon
