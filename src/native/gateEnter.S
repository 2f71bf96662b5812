/* The switch into the 64-bit half of a 32-bit process and back. Contracts: gateEnter.h.
 *
 * 64-bit Windows runs a 32-bit process with two code selectors: 0x23 is 32-bit mode, 0x33 is 64-bit mode. A far return
 * to a selector switches the mode and keeps the other segments, the registers and the stack. Addresses below 4 GiB are
 * the same in both modes.
 */

        .set    selector32, 0x23
        .set    selector64, 0x33
        .set    fsSelector, 0x2B        /* in FS during a call */

/* Switches from 32-bit to 64-bit mode. Preserves the stack. */
        .macro  enter64
        pushl   $selector64
        pushl   $.Lcode64\@
        lretl                           /* pops both words */
.Lcode64\@:
        .code64
        movl    %esp, %esp              /* the upper halves are undefined after a mode switch */
        movl    %ebp, %ebp
        .endm

/* Switches from 64-bit to 32-bit mode. Preserves the stack. */
        .macro  leave64
        call    .Lhere\@                /* pushes the address of the next instruction, eight bytes */
.Lhere\@:
        movl    $selector32, 4(%rsp)    /* the upper word becomes the selector, */
        addl    $.Lcode32\@ - .Lhere\@, (%rsp) /* the lower word the address behind lretl */
        lretl
.Lcode32\@:
        .code32
        .endm

        .data
        .globl  _GateEnabled
        .p2align 2
_GateEnabled:
        .long   1

        .text
        .code32

/* uint64_t GateCall(uint64_t function, int32_t count, ...) */

        /* Arguments, from EBP */
        .set    function, 8
        .set    count, 16
        .set    arguments, 20

        /* Locals, from EBP; the words below EBP hold EBX, ESI and EDI */
        .set    registers, -48          /* the four register arguments */
        .set    rest, -56               /* pointer to the remaining arguments */
        .set    restCount, -64          /* and their number */
        .set    result, -72
        .set    savedFs, -76
        .set    savedStack, -80

        .globl  _GateCall
        .p2align 4
_GateCall:
        cmpl    $0, _GateEnabled
        jne     .Lenabled
        xorl    %eax, %eax
        xorl    %edx, %edx
        ret

.Lenabled:
        pushl   %ebp
        movl    %esp, %ebp
        pushl   %ebx
        pushl   %esi
        pushl   %edi
        subl    $68, %esp               /* down to savedStack */

        /* The first four arguments; 0 beyond the count. */
        leal    arguments(%ebp), %esi
        movl    count(%ebp), %ecx
        xorl    %edx, %edx
.LnextRegister:
        xorl    %eax, %eax
        xorl    %ebx, %ebx
        cmpl    %ecx, %edx
        jge     .LstoreRegister
        movl    (%esi,%edx,8), %eax
        movl    4(%esi,%edx,8), %ebx
.LstoreRegister:
        movl    %eax, registers(%ebp,%edx,8)
        movl    %ebx, registers+4(%ebp,%edx,8)
        incl    %edx
        cmpl    $4, %edx
        jl      .LnextRegister

        /* The remaining arguments. The locals have 64 bits, since 64-bit code uses them. */
        leal    32(%esi), %eax
        movl    %eax, rest(%ebp)
        movl    $0, rest+4(%ebp)
        subl    $4, %ecx
        jg      .LstoreCount
        xorl    %ecx, %ecx
.LstoreCount:
        movl    %ecx, restCount(%ebp)
        movl    $0, restCount+4(%ebp)
        movl    $0, result(%ebp)
        movl    $0, result+4(%ebp)

        movw    %fs, savedFs(%ebp)
        movl    $fsSelector, %eax
        movw    %ax, %fs
        movl    %esp, savedStack(%ebp)
        andl    $-16, %esp

        enter64
        movq    registers(%rbp), %rcx
        movq    registers+8(%rbp), %rdx
        movq    registers+16(%rbp), %r8
        movq    registers+24(%rbp), %r9

        /* Together with RDI and the pushes below, this aligns the stack to 16 bytes for an odd and an even count. */
        movq    restCount(%rbp), %rax
        testb   $1, %al
        jnz     .Lodd
        subq    $8, %rsp
.Lodd:
        pushq   %rdi
        movq    rest(%rbp), %rdi
.LnextPush:
        testq   %rax, %rax
        jz      .Lpushed
        pushq   -8(%rdi,%rax,8)         /* from the last to the first */
        decq    %rax
        jmp     .LnextPush
.Lpushed:
        subq    $32, %rsp               /* home space of the register arguments */
        callq   *function(%rbp)
        movq    restCount(%rbp), %rcx
        leaq    32(%rsp,%rcx,8), %rsp
        popq    %rdi
        movq    %rax, result(%rbp)
        leave64

        movw    %ds, %ax
        movw    %ax, %ss
        movl    savedStack(%ebp), %esp
        movw    savedFs(%ebp), %fs
        movl    result(%ebp), %eax
        movl    result+4(%ebp), %edx
        addl    $68, %esp
        popl    %edi
        popl    %esi
        popl    %ebx
        popl    %ebp
        ret

/* Arguments of GateCopyIn and GateCompare, from EBP */
        .set    pointer32, 8
        .set    address64, 12
        .set    byteCount, 20

/* Jumps to `away` if a pointer, an address or the size is 0. */
        .macro  refuseNothing away
        cmpl    $0, pointer32(%ebp)
        je      \away
        movl    address64(%ebp), %eax
        orl     address64+4(%ebp), %eax
        jz      \away
        cmpl    $0, byteCount(%ebp)
        je      \away
        .endm

/* void GateCopyIn(void* destination, uint64_t source, uint32_t size) */
        .globl  _GateCopyIn
        .p2align 4
_GateCopyIn:
        pushl   %ebp
        movl    %esp, %ebp
        refuseNothing .LcopyDone

        enter64
        pushq   %rdi
        pushq   %rsi
        movl    pointer32(%rbp), %edi
        movq    address64(%rbp), %rsi
        movl    byteCount(%rbp), %ecx
        shrl    $2, %ecx
        rep movsl
        movl    byteCount(%rbp), %eax
        testb   $2, %al
        jz      .LcopyByte
        movsw
.LcopyByte:
        testb   $1, %al
        jz      .LcopyEnd
        movsb
.LcopyEnd:
        popq    %rsi
        popq    %rdi
        leave64

.LcopyDone:
        popl    %ebp
        ret

/* bool GateCompare(const void* buffer, uint64_t address, uint32_t size) */
        .globl  _GateCompare
        .p2align 4
_GateCompare:
        pushl   %ebp
        movl    %esp, %ebp
        refuseNothing .LcompareNothing

        enter64
        pushq   %rdi
        pushq   %rsi
        xorl    %edx, %edx              /* the result */
        movl    pointer32(%rbp), %edi
        movq    address64(%rbp), %rsi
        movl    byteCount(%rbp), %ecx
        movl    %ecx, %eax
        shrl    $2, %ecx
        jz      .LcompareHalf           /* a repetition count of 0 does not set the flags */
        repe cmpsl
        jne     .LcompareEnd
.LcompareHalf:
        testb   $2, %al
        jz      .LcompareByte
        cmpsw
        jne     .LcompareEnd
.LcompareByte:
        testb   $1, %al
        jz      .LcompareEqual
        cmpsb
        jne     .LcompareEnd
.LcompareEqual:
        movl    $1, %edx
.LcompareEnd:
        popq    %rsi
        popq    %rdi
        leave64
        movl    %edx, %eax
        popl    %ebp
        ret

.LcompareNothing:
        xorl    %eax, %eax
        popl    %ebp
        ret

/* uint64_t GateThreadBlock() */
        .set    threadBlock, -8

        .globl  _GateThreadBlock
        .p2align 4
_GateThreadBlock:
        pushl   %ebp
        movl    %esp, %ebp
        subl    $8, %esp
        enter64
        movq    %r12, threadBlock(%rbp) /* R12 holds the address while 32-bit code runs */
        leave64
        movl    threadBlock(%ebp), %eax
        movl    threadBlock+4(%ebp), %edx
        leave
        ret
