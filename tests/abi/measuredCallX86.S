# void MakeMeasuredCall(MeasuredCall* call), cdecl; contract: measuredCall.h.
#
# The callee may spoil whatever register it likes, EBP and EBX included: the way back is kept in memory.

        .set    function, 0
        .set    object, 4
        .set    arguments, 8
        .set    count, 12
        .set    offset, 16
        .set    result, 20
        .set    removed, 24
        .set    changed, 28
        .set    flags, 32

        .lcomm  ownStack, 4
        .lcomm  ownCall, 4
        .lcomm  stackBefore, 4

        .text
        .globl  _MakeMeasuredCall
_MakeMeasuredCall:
        pushl   %ebp
        pushl   %ebx
        pushl   %esi
        pushl   %edi
        movl    20(%esp), %eax
        movl    %esp, ownStack
        movl    %eax, ownCall

        andl    $-16, %esp
        subl    offset(%eax), %esp
        movl    arguments(%eax), %esi
        movl    count(%eax), %edx
        leal    (,%edx,4), %ecx
        movl    %esp, %ebx
        subl    %ecx, %ebx              # ESP when all arguments are pushed
        movl    %ebx, stackBefore
push:
        testl   %edx, %edx
        jz      call
        decl    %edx
        pushl   (%esi,%edx,4)
        jmp     push
call:
        movl    object(%eax), %ecx
        movl    $0x0B0B0B0B, %ebx
        movl    $0x05050505, %esi
        movl    $0x0D0D0D0D, %edi
        movl    $0x0E0E0E0E, %ebp
        call    *function(%eax)

        movl    ownCall, %ecx
        movl    %eax, result(%ecx)
        movl    %esp, %eax
        subl    stackBefore, %eax
        movl    %eax, removed(%ecx)
        movl    ownStack, %esp          # back on our own stack, whatever the callee left
        pushfl
        popl    flags(%ecx)
        cld
        xorl    %edx, %edx
        cmpl    $0x0B0B0B0B, %ebx
        je      1f
        incl    %edx
1:      cmpl    $0x05050505, %esi
        je      1f
        incl    %edx
1:      cmpl    $0x0D0D0D0D, %edi
        je      1f
        incl    %edx
1:      cmpl    $0x0E0E0E0E, %ebp
        je      1f
        incl    %edx
1:      movl    %edx, changed(%ecx)
        popl    %edi
        popl    %esi
        popl    %ebx
        popl    %ebp
        ret
