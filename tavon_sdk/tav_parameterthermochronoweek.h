#pragma once

#include <cstdint>

#include "tav_typedparameter.h"
#include "tav_workerthread.h"

namespace tavon {

// A weekly heating schedule: an active byte and a set-point for every hour of the week.
//
// The value has 673 bytes: the active byte (0 is off), then 168 single-precision numbers, little-endian, from
// Monday 0 o'clock to Sunday 23 o'clock. Its text is a comma list of them, with at most two decimals; a
// set-point of 0.0 reads "0". Schedules have no order: the ordering operators give false.
//
// The object owns a thread from construction to destruction. While the schedule is active, the thread moves
// the current temperature to the set-point of each new hour: one second before the hour, at hh:59:59, plus
// the offset time. The thread takes the lock briefly and never while it waits. Do not destroy the object
// while holding its lock.
//
// Call SetOffsetTime(1100) if every hour's set-point is to be applied once: 0.1 to 2.1 seconds after the hour
// has begun. With an offset below 1000 ms the thread usually applies a set-point within hh:59:59, and then
// takes the hour that is about to begin for the next one again: it applies the same set-point once more an
// hour later, and the following hour's comes an hour late or never. In simulated weeks without an offset,
// only 14 to 105 of 156 hours had their own set-point; with 1000 ms or more all had. Programs have chosen
// their offsets to suit these steps, which are therefore kept.
//
// The thread waits for the next hour on the wall clock. When the clock is set forward past that hour, as it
// often is while a machine starts, the set-point of that hour is applied at once: setting 10:30 to 13:00
// gives 11 o'clock's, until 14 o'clock's comes. After the clock is set back by an hour the thread does
// nothing for an hour. SetActive(GetActive()) applies the set-point of the present hour.
//
// The hook OnChangeTemperature is called on the thread, too, once the schedule is active; the thread has 256
// KiB of stack. An exception that leaves the hook there ends the call and is reported; the thread goes on
// with the next hour. A derived class that overrides it must call term_thread() at the beginning of its
// destructor.
//
// The object belongs to the process that made it, see tavWorkerThread.
class tavParameterThermoChronoWeek : public tavTypedParameter<673> {
 public:
  static constexpr const char* TypeName = "ParameterThermoChronoWeek";
  static const tavParameterType Type;

  tavParameterThermoChronoWeek* GetParameterThermoChronoWeekPtr() override { return this; }

  // A day of the week, for GetDay.
  enum EDays : std::int32_t {
    Days_Monday = 2,
    Days_Tuesday = 4,
    Days_Wednesday = 8,
    Days_Thursday = 16,
    Days_Friday = 32,
    Days_Saturday = 64,
    Days_Sunday = 128,
  };

  // If the thread does not start (reported with code 1), set-points are applied by SetData only.
  tavParameterThermoChronoWeek();
  ~tavParameterThermoChronoWeek() override;

  // The active byte; 0 is off. Setting it keeps the set-points.
  unsigned char GetActive() const;
  void SetActive(unsigned char active);

  // Milliseconds that are added to each wait for the next hour; 0 at first, 1100 is recommended.
  unsigned int GetOffsetTime() const;
  void SetOffsetTime(unsigned int milliseconds);

  // The set-point that was applied last; 0.0 before the first.
  float GetCurrentTemperature() const;

  // Copies the 24 set-points of a day. Any other number copies nothing. The buffer must not be null: a null
  // pointer is reported (code 6) and then written to anyway.
  void GetDay(EDays day, float* o_float_buffer_24) const;

  // Also applies the set-point of the present hour if the schedule is active afterwards.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Applies the set-point of an hour of a day (0 is Monday) if the schedule is active. Hours are counted on
  // into the days before and after, up to the ends of the week; beyond them nothing is applied.
  void update_temperature(int day, int hour);

  // Hook: a set-point has been applied. Called without the lock, on the thread or in SetData.
  virtual void OnChangeTemperature() {}

  // Ends the thread, for good. In a hook on the thread itself it does not wait for that.
  void term_thread();

  // The work of the thread; its argument is the parameter.
  static void thread_procedure(VThread* thread, void* parameter);

  // A text without a comma only writes the active byte, the low 8 bits of its number. A comma list writes the
  // whole value: missing and empty set-points are 0.0, those after the 168th are ignored.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets the active byte or the whole value so, of a parameter known by its interface too. An empty text and
  // null do nothing; another type is reported (code 6).
  tavEError SetDataFromString(const tavString& text) override;
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);

 private:
  unsigned int m_offsetTime = 0;
  float m_currentTemperature = 0.0F;
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
