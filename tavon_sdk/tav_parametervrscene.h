#pragma once

#include "tav_typedparameter.h"
#include "tav_virtualitem.h"
#include "tav_workerthread.h"
#include "vevent.h"

namespace tavon {

// A virtual scene: an ordered list of waits and of parameters to set. 1 plays it once, 2 plays it repeatedly,
// 0 stops it. A single play ends with the value 0.
//
// A scene without waits and with few items is played at once, by the thread that sets the value, with the
// scene's lock held. Any other scene is played on a thread that it owns, which has a stack of 512 KiB and
// never holds the lock while it waits, executes an item or calls a hook. Without a wait, repeated plays keep
// a processor core busy.
//
// The play thread takes a request to play only while it waits for one. A request that comes before the thread
// waits, during a play or in the 100 ms after it is missed: the value is stored and nothing is played. A stop
// ends the play that it meets, and its wait at once, even if a request follows immediately; that request is
// missed as well.
//
// The scene owns its items, and its chain of items is not changed from outside. The parameters that they set
// must outlive the scene, or at least its items: delete_scene() removes the items while the parameters still
// exist.
//
// Do not destroy or rebuild the scene while holding its lock, because that waits for the play thread.
//
// A play calls the items, the virtual SetData and the hooks OnParameterSet and OnPlayFinish. On the play
// thread an exception that leaves one of them ends that call and is reported, and the play goes on with what
// follows. In a play at once it ends the play and reaches the caller of SetData.
//
// Items and hooks may delete or rebuild the scene: the item that is executing lives until it returns, and the
// rest of the play is dropped, without OnPlayFinish. They may set the value, but no other play starts before
// the last item is done, even in a scene that contains itself, directly or through another scene or a link;
// the value stays as it was set. When OnPlayFinish of a play at once asks for another play, that one is over
// before SetValue returns: such plays nest, so there must be an end to them. Items and hooks must not destroy
// the scene object itself. A derived class that overrides a hook or SetData must call delete_scene() at the
// beginning of its destructor.
//
// The object belongs to the process that made it; see tavWorkerThread for that, and for what hooks must not
// do.
class tavParameterVRScene : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterVRScene";
  static const tavParameterType Type;

  tavParameterVRScene* GetParameterVRScenePtr() override { return this; }

  // The largest number of items that a scene without waits may have to be played at once; 2 at first. Set it
  // before scenes are built.
  static unsigned char NonThreadParametersCount;

  tavParameterVRScene();
  ~tavParameterVRScene() override;

  // Build the scene: Begin discards the items, the Add calls append new ones, and End makes the scene ready
  // to play. They return 0 or a reported code: 1 if Begin was not called or the thread does not start, 5
  // without memory, 6 for a wait below 10 ms or a missing parameter or value. A failed call leaves the scene
  // as it was; after a failed End, the next End tries again. If several threads build, their items mix.
  //
  // End of a scene that is played at once writes a notice (code 0) to the error log and returns 0. At a level
  // of the log that throws, it throws the notice.
  //
  // A scene object plays on a thread only until its first rebuild, which is kept for compatibility: Begin
  // ends the thread for good. Nor is such a scene played at once later. Make a new object instead.
  tavEError BuildScene_Begin();
  tavEError BuildScene_AddWait(const unsigned int& ms);
  tavEError BuildScene_AddSetParameter(tavIParameter* pPrm, const unsigned char* pBuffer,
                                       const unsigned int& size);
  tavEError BuildScene_End();

  // True if the scene is played on its thread.
  bool UseThread() const;

  // Values above 2 become 2.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  // Stores the value, and plays or stops. A scene that is played at once plays only at the value 1, and only
  // if it has items.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Asks the play thread again for what the value asks for, in case that it missed the request; does nothing
  // if the value is 0, and during a play. It does not wait and changes no value: call it now and then until
  // the value is 0 again, or, for a repeated play, until OnParameterSet is called. tavHouse::TakeOver does
  // so.
  void RepeatRequest();

  // Adds the element "scene" with an element for each item, in order. A parameter is described by its id and
  // its current value, not by the value that the scene sets: the XML describes the house as it is.
  tavString SerializeParametersAsXml() const override;

  // Hook: a single play has come to its end, and the value is 0 again. Not called for a stopped play.
  virtual void OnPlayFinish() {}
  // Hook: an item that sets a parameter was executed. Called even if that failed.
  virtual void OnParameterSet(tavIParameter* parameter) { static_cast<void>(parameter); }

  // Ends the play thread and a running wait, for good; does nothing if there is no thread. In a hook or an
  // item of this scene it does not wait for the end.
  void term_thread();
  // Does the same, and deletes all items.
  void delete_scene();
  // Appends an item, which then belongs to the scene, and those linked behind it. Needs no memory, and takes
  // the same time however many items there are.
  void add_as_last(tavIVirtualItem* item);

  // The work of the play thread; its argument is the scene.
  static void thread_procedure(VThread* thread, void* scene);

  // The low 8 bits of the number in the text.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;

 private:
  class Play;

  // Owns its items, which are linked one to the next.
  struct Items {
    Items() = default;
    ~Items();
    Items(const Items&) = delete;
    Items& operator=(const Items&) = delete;

    void Append(tavIVirtualItem* item);
    void Swap(Items& other);

    tavIVirtualItem* first = nullptr;
    tavIVirtualItem* last = nullptr;  // where the next is appended
  };

  bool HasMoreItemsThan(unsigned int count) const;
  void EndWaits() const;
  void TellOfSetting(tavIVirtualItem& executed);
  void PlayOnThread();
  void PlayAtOnce();

  bool m_isBuilding = false;
  bool m_usesThread = false;
  VEvent m_playEvent;
  tavWorkerThread m_thread{m_lock};
  Items m_items;
  Items m_discarded;                 // by an item or hook of the play that is under way; freed at its end
  bool m_isPlaying = false;          // from before the first item to after the last
  unsigned int m_playsAtOnce = 0;    // under way; one OnPlayFinish may nest another
  unsigned int m_interruptions = 0;  // how often a stop or the loss of the items has ended any play
};

}  // namespace tavon
