#include "tav_tparameter.h"

#include <new>

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_tparameter"};

constexpr const char* kAddDrivenMapItem = "AddDrivenMapItem";

}  // namespace

LinkWithParameterData::LinkWithParameterData(tavECodeOperator op, const unsigned char* driverData,
                                             unsigned int driverSize, const unsigned char* drivenData,
                                             unsigned int drivenSize)
    : m_operator(op),
      m_driverData(Copy(driverData, driverSize, "m_pDriverData == 0", {72})),
      m_driverSize(driverSize),
      m_drivenData(Copy(drivenData, drivenSize, "m_pDrivenData == 0", {80})),
      m_drivenSize(drivenSize) {}

// A copy followed by a zero, or null after a report.
LinkWithParameterData::Operand LinkWithParameterData::Copy(const unsigned char* data, unsigned int size,
                                                           const char* message, vlib::Place place) {
  Operand copy;
  const std::size_t length = std::size_t{size} + 1;
  // Where sizes have 32 bits, the sum wraps to 0 for the largest operand, which no memory holds.
  if (length != 0) copy.reset(new (std::nothrow) unsigned char[length]);
  if (!copy) {
    m_error = kReport(tavError_OutOfMemory, message, place);
    return nullptr;
  }
  std::copy_n(data, size, copy.get());
  copy[size] = 0;
  return copy;
}

unsigned int tavDrivenMap::Add(vMutex& lock, tavECodeOperator op, const unsigned char* dataDriver,
                               unsigned int sizeDriver, const unsigned char* dataDriven,
                               unsigned int sizeDriven) {
  if (dataDriver == nullptr || sizeDriver == 0) {
    return kReport(tavError_InvalidArgument, "dataDriver == 0 || sizeDriver == 0", {223, kAddDrivenMapItem});
  }
  if (dataDriven == nullptr || sizeDriven == 0) {
    return kReport(tavError_InvalidArgument, "dataDriven == 0 || sizeDriven == 0", {224, kAddDrivenMapItem});
  }
  std::list<LinkWithParameterData> rule;
  try {
    rule.emplace_back(op, dataDriver, sizeDriver, dataDriven, sizeDriven);
  } catch (const std::bad_alloc&) {
    return kReport(tavError_OutOfMemory, "m_pDrivenMap == 0", {.function = kAddDrivenMapItem});
  }
  if (rule.front().GetError() != tavError_NoError) return rule.front().GetError();
  const tavSMutex locked(&lock);
  m_rules.splice(m_rules.end(), rule);
  return tavError_NoError;
}

bool tavDrivenMap::Apply(const tavIParameter& driver, tavIParameter& target) const {
  const auto rule = std::find_if(m_rules.begin(), m_rules.end(),
                                 [&](const LinkWithParameterData& link) { return link.Holds(driver); });
  if (rule == m_rules.end()) return false;
  rule->Apply(target);
  return true;
}

void tavReportNoBuffer() { kReport(tavError_InvalidArgument, "io_buffer == 0", {192, "GetDataCopy"}); }

template class tavTParameter<1>;
template class tavTParameter<4>;
template class tavTParameter<673>;

}  // namespace tavon
