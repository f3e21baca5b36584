; Lab 11, a subroutine
;
; Aim
;   Write a subroutine that disturbs nobody. It
;   gets a byte in A and returns in A how many
;   of its bits are 1. The pairs BC, DE and HL
;   are the caller's, and must be as they were.
; Before
;   9000  how many bytes there are, at least 01
;   9001  the first of them, and so on
; After
;   9100  the number of ones of each byte
;   SP    FFF0, so nothing is left on the stack
;
; given [three bytes] 9000=03,A5,FF,01
; gives 9100=04,08,01,00, SP=FFF0
; given [no bit and all bits] 9000=02,00,FF
; gives 9100=00,08, SP=FFF0
; given [one byte] 9000=01,80, 9101=55
; gives 9100=01,55, SP=FFF0
; given [sixteen bytes] 9000=10, 9001-9010=7F
; gives 9100-910F=07, 9110=00, SP=FFF0

; This program is complete. It calls ONES for
; each byte.
    LXI H,9000
    LXI D,9100
    MOV B,M    ; how many bytes are left
NEXT:
    INX H
    MOV A,M
    CALL ONES
    STAX D
    INX D
    DCR B
    JNZ NEXT
    HLT

ONES:
; Your subroutine

    RET

; Hint
;   Your program of lab 4 does what is needed,
;   but it uses B and C. PUSH B keeps both on
;   the stack, and POP B takes them back before
;   RET. RET finds its address on the stack, so
;   nothing else may be on top of it by then.
