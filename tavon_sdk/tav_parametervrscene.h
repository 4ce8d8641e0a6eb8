#pragma once

#include <memory>

#include "tav_byteparameter.h"
#include "tav_virtualitem.h"
#include "tav_workerthread.h"
#include "vevent.h"

namespace tavon {

// A virtual scene: an ordered list of waits and of parameters to set. 1 plays it once, 2 plays it over and
// over, 0 stops it; a single play ends with the value 0.
//
// A scene without waits and with few items is played at once, by the thread that sets the value, with the
// scene's lock held. Any other is played on a thread that the scene owns. The scene owns its items; the
// parameters they set must outlive it.
//
// The play thread never holds the lock while it waits or executes an item; whoever destroys or rebuilds the
// scene waits for it, and so must neither hold the scene's lock nor be the play thread. The hooks and the
// virtual SetData are called on the play thread: a class that derives from this one and overrides them must
// call delete_scene() first thing in its own destructor.
class tavParameterVRScene : public tavByteParameter<tavParameterVRScene> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterVRScene;
  static constexpr const char* TypeName = "ParameterVRScene";
  static constexpr tavReporter Report{"tav_parametervrscene"};
  static constexpr tavPublishedLines Lines{
      .setDataFromString = 44, .setDataValue = 90, .getDataValue = 94, .comparison = 148};

  // The most items that a scene without waits may have and still be played without a thread; 2 at first. Set
  // before scenes are built.
  static unsigned char NonThreadParametersCount;

  tavParameterVRScene();
  ~tavParameterVRScene() override;

  // Building a scene: Begin discards the one there is, the Add calls append to the new one, End makes it
  // playable. They return 0 or a reported code: 1 outside of Begin and End or when the thread does not start,
  // 5 without memory, 6 for a wait below 10 ms or a missing parameter or value. A failed call leaves the
  // scene as it was. One thread builds at a time.
  //
  // Once the play thread of a scene has been stopped, which Begin does, the object plays nothing on a thread
  // any more: intended. A scene that needed a thread once is not played without one later.
  tavEError BuildScene_Begin();
  tavEError BuildScene_AddWait(const unsigned int& ms);
  tavEError BuildScene_AddSetParameter(tavIParameter* pPrm, const unsigned char* pBuffer,
                                       const unsigned int& size);
  tavEError BuildScene_End();

  // True when the scene is played on its thread.
  bool UseThread() const;

  // Values above 2 become 2.
  void SetValue(unsigned char value);

  // Stores the value and plays or stops. On a thread, a request to play is seen only by a thread that waits
  // for one: a request in the 100 ms between two plays is missed, as is one while it plays. Stopping ends a
  // running wait. Without a thread only the value 1 plays, and only a scene that has items.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // With the element "scene": an element for each item, in order. For a parameter that is its id and its
  // current value, not the one that the scene would set: intended.
  tavString SerializeParametersAsXml() const override;

  // Hook: a single play has ended and the value is 0 again. Not called when a play was stopped.
  virtual void OnPlayFinish() {}
  // Hook: an item has set a parameter.
  virtual void OnParameterSet(tavIParameter* parameter) { static_cast<void>(parameter); }

  // Stops the play thread, ending a running wait, and waits for its end.
  void term_thread();
  // The same, and deletes all items.
  void delete_scene();
  // Appends an item, which the scene owns from now on. Not while the scene is played on its thread.
  void add_as_last(tavIVirtualItem* item);

  // The play thread's work; its argument is the scene.
  static void thread_procedure(VThread* thread, void* scene);

  // Writes one byte: the low 8 bits of the number in the text. An empty text writes nothing, a null buffer is
  // reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  struct Items;
  struct Step;

  template <class Item>
  std::unique_ptr<Item> MakeItem();
  tavIVirtualItem* FirstItem() const;
  bool HasMoreThan(unsigned int count) const;
  void EndWaits();
  void ExecuteStep(const Step& step);
  bool IsPlaying(const std::shared_ptr<Items>& items) const;
  bool MayExecute(const std::shared_ptr<Items>& items, const Step& step) const;
  bool PlayItems(const std::shared_ptr<Items>& items);
  void PlayOnThread();
  void PlayAtOnce();

  bool m_isBuilding = false;
  bool m_usesThread = false;
  bool m_isPlayingAtOnce = false;
  VEvent m_playEvent;
  tavWorkerThread m_thread{m_lock};
  std::shared_ptr<Items> m_items;  // null while there are none; a play under way has a share, too
};

}  // namespace tavon
