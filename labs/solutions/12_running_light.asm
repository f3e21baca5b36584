; Lab 12, a running light, solved
;
;   A  the pattern
;   B  the steps to go
;   C  for WAIT
;
; B is tested before the first step, and begins
; one too large for that. So FF begins with 0,
; and still makes 255 steps.
;
; given [three steps] port 01=03
; gives port 02=08, T-states >= 9231
; gives T-states <= 10000
; given [once round] port 01=08
; gives port 02=01, T-states >= 24616
; given [as many as possible] port 01=FF
; gives port 02=80, T-states >= 784635
; given [no step] port 01=00
; gives port 02=01, T-states <= 200

    IN 01
    MOV B,A
    MVI A,01   ; the lamp at the right end
    OUT 02
    INR B      ; TEST takes it off again
    JMP TEST
STEP:
    CALL WAIT
    RLC        ; one place to the left
    OUT 02
TEST:
    DCR B
    JNZ STEP
    HLT

; Waits a millisecond, 220 times 14 T-states.
; Changes C and the flags.
WAIT:
    MVI C,0DC
LOOP:
    DCR C
    JNZ LOOP
    RET
