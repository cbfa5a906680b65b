// Unwinding through Objective-C++ is unwinding through C++: there are no Objective-C exceptions here.
#include <unwind.h>

extern "C" {

_Unwind_Reason_Code __gxx_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind, _Unwind_Exception* exception,
                                         _Unwind_Context* context);

_Unwind_Reason_Code __gnustep_objcxx_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                                    _Unwind_Exception* exception, _Unwind_Context* context) {
  return __gxx_personality_v0(version, actions, kind, exception, context);
}

}  // extern "C"
