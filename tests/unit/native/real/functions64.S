/* Contracts: functions64.h. */

        .text

/* A 64-bit function that records how it was called. */
        .code64
        .globl  _Recorder64Begin
        .p2align 4
_Recorder64Begin:
        leaq    .Lrecord(%rip), %rax
        movq    %rcx, 0(%rax)
        movq    %rdx, 8(%rax)
        movq    %r8, 16(%rax)
        movq    %r9, 24(%rax)
        movq    40(%rsp), %r10          /* behind the return address and the home space */
        movq    %r10, 32(%rax)
        movq    48(%rsp), %r10
        movq    %r10, 40(%rax)
        movq    %rsp, 48(%rax)
        pushfq
        popq    %r10
        movq    %r10, 56(%rax)
        movw    %fs, 64(%rax)
        movw    %ss, 66(%rax)
        movw    %cs, 68(%rax)
        incq    72(%rax)
        stmxcsr 80(%rax)
        fnstcw  84(%rax)
        cmpl    $0, 88(%rax)
        je      .Lunchanged
        ldmxcsr 88(%rax)
        fldcw   92(%rax)
        std
.Lunchanged:
        /* The 64-bit calling convention lets a function change all of these. */
        movabsq $0x1111111111111111, %rcx
        movq    %rcx, %rdx
        movq    %rcx, %r8
        movq    %rcx, %r9
        movq    %rcx, %r10
        movq    %rcx, %r11
        movabsq $0x123456789ABCDEF0, %rax
        ret
        .p2align 3
.Lrecord:
        .space  96
        .globl  _Recorder64End
_Recorder64End:

/* Notes the state in the MarkedState whose address is at `place` from EBP. Changes ECX and EAX. */
        .macro  noteState place
        movl    \place(%ebp), %ecx
        movl    %ebx, 0(%ecx)
        movl    %esi, 4(%ecx)
        movl    %edi, 8(%ecx)
        movl    %ebp, 12(%ecx)
        movl    %esp, 16(%ecx)
        pushfl
        popl    20(%ecx)
        movw    %fs, 24(%ecx)
        movw    %ss, 26(%ecx)
        movw    %ds, 28(%ecx)
        movw    %es, 30(%ecx)
        movw    %gs, 32(%ecx)
        movw    %cs, 34(%ecx)
        fnstcw  36(%ecx)
        fnstsw  38(%ecx)
        stmxcsr 40(%ecx)
        fstl    48(%ecx)                /* the register stack, and back again */
        fincstp
        fstl    56(%ecx)
        fincstp
        fstl    64(%ecx)
        fdecstp
        fdecstp
        .endm

/* void CallMarked(const void* routine, const uint32_t* words, uint32_t count, uint32_t misalignment,
                   MarkedState* before, MarkedState* after) */
        .code32
        .set    routine, 8
        .set    words, 12
        .set    count, 16
        .set    misalignment, 20
        .set    before, 24
        .set    after, 28
        .set    oldControl, -16
        .set    oldSseControl, -20
        .set    newControl, -24

        .globl  _CallMarked
        .p2align 4
_CallMarked:
        pushl   %ebp
        movl    %esp, %ebp
        pushl   %ebx
        pushl   %esi
        pushl   %edi
        subl    $12, %esp

        fnstcw  oldControl(%ebp)
        stmxcsr oldSseControl(%ebp)
        movl    $0x067F, newControl(%ebp)       /* double precision, rounded down, all exceptions masked */
        fldcw   newControl(%ebp)
        movl    $0x3F80, newControl(%ebp)       /* rounded down too */
        ldmxcsr newControl(%ebp)
        fldpi
        fldl2e
        fldln2

        /* The words as the arguments, on a stack that stands where it is wanted. */
        movl    count(%ebp), %ecx
        leal    0(,%ecx,4), %eax
        subl    %eax, %esp
        subl    $16, %esp
        andl    $-16, %esp
        addl    misalignment(%ebp), %esp
        movl    words(%ebp), %esi
        movl    %esp, %edi
        rep movsl

        movl    $0xB0B0B0B0, %ebx
        movl    $0x51515151, %esi
        movl    $0xD1D1D1D1, %edi
        noteState before
        call    *routine(%ebp)
        movl    after(%ebp), %ecx
        movl    %eax, 72(%ecx)
        movl    %edx, 76(%ecx)
        noteState after
        cld

        fstp    %st(0)
        fstp    %st(0)
        fstp    %st(0)
        fldcw   oldControl(%ebp)
        ldmxcsr oldSseControl(%ebp)
        leal    -12(%ebp), %esp
        popl    %edi
        popl    %esi
        popl    %ebx
        popl    %ebp
        ret
