; Lab 11, a subroutine, solved
;
; ONES needs two registers of its own. It takes
; B and C, and the stack keeps what the caller
; had in them.
;
; given [three bytes] 9000=03,A5,FF,01
; gives 9100=04,08,01,00, SP=FFF0
; given [no bit and all bits] 9000=02,00,FF
; gives 9100=00,08, SP=FFF0
; given [one byte] 9000=01,80, 9101=55
; gives 9100=01,55, SP=FFF0
; given [sixteen bytes] 9000=10, 9001-9010=7F
; gives 9100-910F=07, 9110=00, SP=FFF0

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

; A becomes the number of its bits that are 1.
ONES:
    PUSH B     ; keep the caller's B and C
    MVI B,0    ; the ones so far
    MVI C,8    ; the rounds to go
BIT:
    RLC
    JNC ZERO
    INR B
ZERO:
    DCR C
    JNZ BIT
    MOV A,B
    POP B      ; the caller's again
    RET
