#include "tav_parameter.h"

namespace tavon {

tavString tavIParameter::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavObject::SerializeParametersAsXml();
  xml.append("<value>").append(ValueToString()).append("</value>");
  return xml;
}

}  // namespace tavon
