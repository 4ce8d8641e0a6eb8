#pragma once

#include "tav_concreteparameter.h"
#include "tav_workerthread.h"

namespace tavon {

// A weekly heating schedule: an active byte and a set-point for every hour of every day of the week.
//
// The value has 673 bytes: the active byte (0: off), then 168 single-precision numbers, Monday 0 o'clock
// first, Sunday 23 o'clock last, in the machine's (little-endian) order.
//
// The object owns a thread, from construction to destruction, that moves the current temperature to the
// set-point of each new hour while the schedule is active: one second early, at hh:59:59, plus the offset
// time. When it is done within that second, the hour that comes next is still the same one, and its set-point
// is applied once more an hour later, the following one an hour late: intended. The thread takes the lock
// briefly and never while it waits, so nobody may hold the object's lock who destroys it.
//
// The hook OnChangeTemperature is called on that thread too, but not before the schedule is active: a class
// that derives from this one and overrides it must call term_thread() first thing in its own destructor.
class tavParameterThermoChronoWeek : public tavConcreteParameter<tavParameterThermoChronoWeek, 673> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterThermoChronoWeek;
  static constexpr const char* TypeName = "ParameterThermoChronoWeek";
  static constexpr tavReporter Report{"tav_parameterthermochronoweek"};
  static constexpr tavPublishedLines Lines{
      .setDataFromString = 72, .setDataValue = 98, .getDataValue = 102, .comparison = 211};

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

  // A thread that does not start is reported, code 1; set-points are then applied by SetData only.
  tavParameterThermoChronoWeek();
  ~tavParameterThermoChronoWeek() override;

  // The active byte. Setting it keeps the set-points.
  unsigned char GetActive() const;
  void SetActive(unsigned char active);

  // Milliseconds that are added to every wait for the next hour.
  unsigned int GetOffsetTime() const;
  void SetOffsetTime(unsigned int milliseconds);

  // The set-point applied last; 0.0 before the first.
  float GetCurrentTemperature() const;

  // Copies the 24 set-points of a day. What is no day copies nothing. A null buffer is reported (code 6) and
  // then written through all the same: it must not be null.
  void GetDay(EDays day, float* o_float_buffer_24) const;

  // As everywhere, and then the set-point of the present hour is applied when the schedule is active.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // A text without comma sets the active byte only, a comma list all of the value; an empty text does
  // nothing.
  using tavConcreteParameter::SetDataFromString;
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);

  // The active byte and the set-points, with at most two decimals, in a comma list.
  tavString ValueToString() const override;

  // Schedules are equal or not; the other operators give false, and so does an operand of fewer than 673
  // bytes.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // Applies the set-point of an hour of a day (0 is Monday) when the schedule is active.
  void update_temperature(int day, int hour);

  // Hook: called without the lock, each time a set-point has been applied, on the thread or in SetData.
  virtual void OnChangeTemperature() {}

  // Stops the thread and waits for its end.
  void term_thread();

  // The thread's work; its argument is the parameter.
  static void thread_procedure(VThread* thread, void* parameter);

  // Writes 673 bytes: the active byte and the set-points, little-endian. A text without comma writes the
  // active byte only. A comma list writes all; missing and empty set-points are 0.0, more than 168 are
  // ignored. An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  unsigned int m_offsetTime = 0;
  float m_currentTemperature = 0.0F;
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
