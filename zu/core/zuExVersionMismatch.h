// zuExVersionMismatch: a component was built against another version of the
// library than the one loaded.
//
//   catch (zuExVersionMismatch& error) {
//     report(error.GetComponent(), error.GetVersion());
//   }
//
// It has no items. zuExVersionMismatchImpl is the form the library throws.
#pragma once

#include "zu/core/zuException.h"
#include "zu/core/zuExport.h"

class ZU_EXPORT zuExVersionMismatch : public zuException {
 public:
  ~zuExVersionMismatch() override;
  // The version text the component required.
  virtual const char* GetVersion() const = 0;
  // The name of the component that required it.
  virtual const char* GetComponent() const = 0;

 protected:
  zuExVersionMismatch() = default;
  zuExVersionMismatch(const zuExVersionMismatch&) = default;
  zuExVersionMismatch& operator=(const zuExVersionMismatch&) = default;
};

// Points at two library-wide buffers holding the texts, each cut to
// kMaxTextLength bytes (never inside a UTF-8 sequence). Constructing one
// overwrites the buffers, so texts read from an older object change with it;
// the buffers need no allocation, which matters while start-up is failing.
class ZU_EXPORT zuExVersionMismatchImpl : public zuExVersionMismatch {
 public:
  static constexpr unsigned int kMaxTextLength = 32;

  // Null texts count as empty.
  zuExVersionMismatchImpl(const char* requiredVersion, const char* component);
  zuExVersionMismatchImpl(const zuExVersionMismatchImpl&) = default;
  zuExVersionMismatchImpl& operator=(const zuExVersionMismatchImpl&) = default;
  ~zuExVersionMismatchImpl() override;

  const char* GetVersion() const override { return version_; }
  const char* GetComponent() const override { return component_; }

 private:
  const char* version_;
  const char* component_;
};
