// zuutility: the umbrella header. Includes every public header of the library.
//
//   #include <zu/zuutility.h>
#pragma once

#include "zu/core/zuExport.h"

// Strings
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/core/zuThreadSafeString.h"

// Unicode encodings
#include "zu/core/zuUCS2.h"
#include "zu/core/zuUCS4.h"
#include "zu/core/zuUnicode.h"

// Exceptions and message formatting
#include "zu/core/zuExAssert.h"
#include "zu/core/zuExDeleterFunctionHolder.h"
#include "zu/core/zuExErrItem.h"
#include "zu/core/zuExResourceFailure.h"
#include "zu/core/zuExVersionMismatch.h"
#include "zu/core/zuException.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"
#include "zu/core/zuMessageIds.h"
#include "zu/core/zuNewHandler.h"

// Trace and timing
#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandler.h"
#include "zu/runtime/zuTraceHandlerTLS.h"

// Threads, synchronisation and thread-local storage
#include "zu/runtime/zuEvent.h"
#include "zu/runtime/zuMutex.h"
#include "zu/runtime/zuPerformTimes.h"
#include "zu/runtime/zuPosixEvent.h"
#include "zu/runtime/zuPosixMutex.h"
#include "zu/runtime/zuPosixPerformTimes.h"
#include "zu/runtime/zuPosixThread.h"
#include "zu/runtime/zuPosixTlsAnchor.h"
#include "zu/runtime/zuSynch.h"
#include "zu/runtime/zuThread.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTlsAnchor.h"

// Block cache and atoms
#include "zu/core/zuAtomInitializer.h"
#include "zu/core/zuAtomStore.h"
#include "zu/core/zuAtomTable.h"
#include "zu/core/zuAtom_str.h"
#include "zu/core/zuStringLookup.h"
#include "zu/runtime/zuCacheManager.h"
#include "zu/runtime/zuMemoryCache.h"
#include "zu/runtime/zuMemoryCacheList.h"

// Character-set converters
#include "zu/core/zuCharConverter.h"
#include "zu/core/zuGxCharConverter.h"

// Message catalogues and start-up
#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuResourceLoader.h"
#include "zu/core/zuUtilityInit.h"
#include "zu/core/zuVersionChecker.h"

// Locale identity and resolution
#include "zu/locale/RnLocale.h"

// Locale data
#include "zu/locale/RnData.h"

// Numeric helpers and numeric pictures
#include "zu/picture/RnNum.h"

#include "zu/picture/zuNumeric.h"

// Text pictures
#include "zu/picture/RnText.h"

// Calendar converters
#include "zu/picture/GregorianCalendarConvertor.h"
#include "zu/picture/HijriCalendarConvertor.h"
#include "zu/picture/ICalendarConverter.h"
#include "zu/picture/zuCalendarConverters.h"

// Date pictures
#include "zu/picture/RnDate.h"
#include "zu/picture/RnEraTables.h"

// Time pictures
#include "zu/picture/RnTime.h"

// ISO 8601 values
#include "zu/datetime/ISODate.h"
#include "zu/datetime/ISODateTime.h"
#include "zu/datetime/ISOTime.h"

// Dates, times and date-times as values
#include "zu/datetime/zuDate.h"
#include "zu/datetime/zuDateTime.h"
#include "zu/datetime/zuTime.h"

// Picture-clause dispatcher
#include "zu/picture/zuPicture.h"

// Memory streams, stream transformers and Base64
#include "zu/stream/zuBase64.h"
#include "zu/stream/zuBase64StreamTransformer.h"
#include "zu/stream/zuFilePosition.h"
#include "zu/stream/zuFixedMemoryStreamFile.h"
#include "zu/stream/zuFixedMemoryStreamImpl.h"
#include "zu/stream/zuMemoryStreamBody.h"
#include "zu/stream/zuMemoryStreamFile.h"
#include "zu/stream/zuMemoryStreamFileImpl.h"
#include "zu/stream/zuStreamFile.h"
#include "zu/stream/zuStreamFileTransformer.h"

// Lengths with units and page geometry
#include "zu/measure/zuAngle.h"
#include "zu/measure/zuCoordPair.h"
#include "zu/measure/zuMargins.h"
#include "zu/measure/zuRect.h"
#include "zu/measure/zuUnitSpan.h"

// Containers
#include "zu/core/zuStorage.h"

// Objects and lists
#include "zu/core/zuObj.h"
#include "zu/core/zuObjArrayList.h"
#include "zu/core/zuObjIter.h"
#include "zu/core/zuObjWrap.h"
