// Sending a message: finds the method and jumps there with all argument registers as they were (System V ABI for x86-64).

// A message to nil answers 0 in every register that an answer can be in; one that answers a structure in memory is not sent to nil at all:
// the compiler tests the receiver first.
__asm__(R"(
.macro TILORA_SEND name, receiver, selector
.globl \name
.type \name, @function
\name:
  .cfi_startproc
  testq \receiver, \receiver
  jz tilora_objc_nil
  pushq %rbp
  .cfi_def_cfa_offset 16
  .cfi_offset %rbp, -16
  movq %rsp, %rbp
  .cfi_def_cfa_register %rbp
  subq $192, %rsp
  movq %rdi, -8(%rbp)
  movq %rsi, -16(%rbp)
  movq %rdx, -24(%rbp)
  movq %rcx, -32(%rbp)
  movq %r8, -40(%rbp)
  movq %r9, -48(%rbp)
  movq %rax, -56(%rbp)
  movaps %xmm0, -80(%rbp)
  movaps %xmm1, -96(%rbp)
  movaps %xmm2, -112(%rbp)
  movaps %xmm3, -128(%rbp)
  movaps %xmm4, -144(%rbp)
  movaps %xmm5, -160(%rbp)
  movaps %xmm6, -176(%rbp)
  movaps %xmm7, -192(%rbp)
  movq \receiver, %rax
  movq \selector, %rsi
  movq %rax, %rdi
  call tilora_objc_method
  movq %rax, %r11
  movq -8(%rbp), %rdi
  movq -16(%rbp), %rsi
  movq -24(%rbp), %rdx
  movq -32(%rbp), %rcx
  movq -40(%rbp), %r8
  movq -48(%rbp), %r9
  movq -56(%rbp), %rax
  movaps -80(%rbp), %xmm0
  movaps -96(%rbp), %xmm1
  movaps -112(%rbp), %xmm2
  movaps -128(%rbp), %xmm3
  movaps -144(%rbp), %xmm4
  movaps -160(%rbp), %xmm5
  movaps -176(%rbp), %xmm6
  movaps -192(%rbp), %xmm7
  leave
  .cfi_def_cfa %rsp, 8
  jmp *%r11
  .cfi_endproc
.size \name, . - \name
.endm

.text
TILORA_SEND objc_msgSend, %rdi, %rsi
TILORA_SEND objc_msgSend_stret, %rsi, %rdx
tilora_objc_nil:
  xorl %eax, %eax
  xorl %edx, %edx
  pxor %xmm0, %xmm0
  pxor %xmm1, %xmm1
  ret
)");
