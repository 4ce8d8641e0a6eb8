#pragma once

#include <memory>

#include "tav_parameter.h"
#include "tav_virtualitem.h"

namespace tavon {

// The setting of a parameter to a stored value in a scene. It owns a copy of the value; the parameter must
// outlive it.
class tavVirtualItemParameter : public tavVirtualItem {
 public:
  // Reported and returned: code 6 when the parameter or the value is missing, code 5 without memory.
  tavEError SetParameter(tavIParameter* pPrm, const unsigned char* pBuffer, const unsigned int& size);

  // The parameter to set, or null.
  tavIParameter* GetParameter() const { return m_parameter; }

  int GetType() const override { return 1; }

  // Sets the parameter. Code 6 is reported and returned when there is none or no value.
  unsigned int Execute() override;

  void ExitExecute() override {}

 private:
  tavIParameter* m_parameter = nullptr;
  std::unique_ptr<unsigned char[]> m_data;
  unsigned int m_size = 0;
};

}  // namespace tavon
