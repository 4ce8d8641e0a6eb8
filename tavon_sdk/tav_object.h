#pragma once

#include <cstdint>
#include <memory>

#include "tav_smutex.h"
#include "tav_string.h"
#include "vplace.h"

namespace tavon {

// The types of objects. The numbers are stored and travel between programs.
enum tavEObject : std::int32_t {
  // No type: the result for an unknown type name.
  tavObject_None = -1,
  // An object that is not a parameter.
  tavObject_Object = 0,
  tavObject_ParameterSwitch = 1000,
  tavObject_ParameterSwitchRelease = 1001,
  tavObject_ParameterSlider = 1002,
  tavObject_ParameterColor = 1003,
  tavObject_ParameterInfo = 1004,
  tavObject_ParameterShutter = 1005,
  tavObject_ParameterThermo = 1006,
  tavObject_ParameterThermoChronoWeek = 1007,
  tavObject_ParameterHDScene = 1008,
  tavObject_ParameterVRScene = 1009,
  tavObject_ParameterAlert = 1010,
  tavObject_ParameterByte = 1011,
  tavObject_ParameterTuner = 1012,
  tavObject_ParameterCamera = 1013,
};

// Interface of an object of the model: an id, a name, flags, and its text forms. See tavObject.
class tavIObject {
 public:
  virtual ~tavIObject() = default;
  // See tavObject.
  virtual tavEObject GetType() const = 0;
  virtual const char* GetTypeName() const = 0;
  virtual void SetUniqueID(const unsigned int& id) = 0;
  virtual unsigned int GetUniqueID() const = 0;
  virtual void SetName(const wchar_t* name) = 0;
  virtual tavWString GetName() const = 0;
  virtual void SetPrefix(const wchar_t* prefix) = 0;
  virtual tavWString GetPrefix() const = 0;
  virtual void SetSuffix(const wchar_t* suffix) = 0;
  virtual tavWString GetSuffix() const = 0;
  virtual bool IsDirty() const = 0;
  virtual void IsDirty(bool dirty) = 0;
  virtual unsigned char GetFlags() const = 0;
  virtual void SetFlags(unsigned char flags) = 0;
  virtual void AddFlags(unsigned char mask) = 0;
  virtual void RemoveFlags(unsigned char mask) = 0;
  virtual bool HasFlags(unsigned char mask) const = 0;
  virtual bool IsValid() const = 0;
  virtual bool IsObject(tavEObject type) const = 0;
  virtual tavString SerializeAsXml() const = 0;
  virtual tavString ToString() const = 0;
  virtual void SetUserData(void* data) = 0;
  virtual void* GetUserData() const = 0;
  virtual tavString SerializeParametersAsXml() const = 0;
  virtual void OnDirty() = 0;
};

// The base of every object of the model.
//
// Any thread may call any operation: each takes the object's recursive lock, which the layers above share.
// Only the hook OnDirty is called without it. The object owns its texts; the user data belongs to the caller.
class tavObject : public tavIObject {
 public:
  tavObject() = default;
  tavObject(const tavObject&) = delete;
  tavObject& operator=(const tavObject&) = delete;

  // What the object is.
  tavEObject GetType() const override { return tavObject_Object; }
  const char* GetTypeName() const override { return "Object"; }

  // Identifies the object on the wire and in XML; 0 until set.
  void SetUniqueID(const unsigned int& id) override;
  unsigned int GetUniqueID() const override;

  // The name and the texts before and after it; empty until set. The text must not be null. If there is no
  // memory for it, code 5 is reported and the text becomes empty. Naming an object does not make it dirty.
  void SetName(const wchar_t* name) override;
  tavWString GetName() const override;
  void SetPrefix(const wchar_t* prefix) override;
  tavWString GetPrefix() const override;
  void SetSuffix(const wchar_t* suffix) override;
  tavWString GetSuffix() const override;

  // Dirty means changed but not yet acknowledged; it is bit 0 of the flags. Despite its name, OnDirty is
  // called when a dirty object is made clean: the change is acknowledged then. Making an object dirty
  // calls nothing.
  bool IsDirty() const override;
  void IsDirty(bool dirty) override;

  // The flags byte. Bits 1 to 7 are free for callers. SetFlags replaces all bits, including the dirty bit,
  // without calling OnDirty. HasFlags is true if any bit of the mask is set.
  unsigned char GetFlags() const override;
  void SetFlags(unsigned char flags) override;
  void AddFlags(unsigned char mask) override;
  void RemoveFlags(unsigned char mask) override;
  bool HasFlags(unsigned char mask) const override;

  // IsValid is true for every object. IsObject is true if the object is of that type.
  bool IsValid() const override;
  bool IsObject(tavEObject type) const override { return GetType() == type; }

  // One XML element in UTF-8, named after the type, with id, type, name, prefix and suffix as attributes and
  // SerializeParametersAsXml as its content. Texts are inserted as they are, without escaping.
  tavString SerializeAsXml() const override;

  // Prefix, name and suffix, followed by "." and the name of the type.
  tavString ToString() const override;

  // A pointer that the object keeps for the caller and never uses.
  void SetUserData(void* data) override;
  void* GetUserData() const override;

  // The flags as an XML element of eight digits, bit 7 first.
  tavString SerializeParametersAsXml() const override;

  // Hook: called without the lock when a dirty object has been made clean.
  void OnDirty() override {}

 protected:
  // Guards all of the object and of the layers above it.
  mutable vMutex m_lock;

 private:
  using WideText = std::unique_ptr<wchar_t[]>;

  void StoreText(WideText& target, const wchar_t* text, const char* message, vlib::Place place);
  tavWString CopyOf(const WideText& text) const;

  unsigned int m_uniqueId = 0;
  unsigned char m_flags = 0;
  void* m_userData = nullptr;
  WideText m_suffix;
  WideText m_name;
  WideText m_prefix;
};

}  // namespace tavon
