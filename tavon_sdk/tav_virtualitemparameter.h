#pragma once

#include <memory>

#include "tav_parameter.h"
#include "tav_virtualitem.h"

namespace tavon {

// Step of a scene that sets a parameter to a stored value. It owns a copy of the value; the parameter must
// outlive the item.
class tavVirtualItemParameter : public tavVirtualItem {
 public:
  // Returns 0 or a reported code: 6 if the parameter or the value is missing, 5 without memory.
  tavEError SetParameter(tavIParameter* pPrm, const unsigned char* pBuffer, const unsigned int& size);

  // The parameter to set, or null.
  tavIParameter* GetParameter() const { return m_parameter; }

  int GetType() const override { return tavVirtualItem_SetParameter; }

  // Sets the parameter. Reports and returns code 6 if there is no parameter or no value.
  unsigned int Execute() override;

  void ExitExecute() override {}

 private:
  tavIParameter* m_parameter = nullptr;
  std::unique_ptr<unsigned char[]> m_data;
  unsigned int m_size = 0;
};

}  // namespace tavon
