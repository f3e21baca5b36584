; Lab 8, a block move that makes room, solved
;
; The last number moves first, so that none is
; overwritten before it has moved.
;
;   BC  how many numbers are still to move
;   HL  the address of the one that moves
;
; given [three] 9000=3,11,22,33,44,EE, 9100=05
; gives 9000=04,05,11,22,33,EE
; given [one number] 9000=01,11,22,EE, 9100=05
; gives 9000=02,05,11,EE
; given [all the same] 9000=2,7,7,EE,EE, 9100=07
; gives 9000=03,07,07,07,EE
; given [an empty list] 9000=00,77,EE, 9100=05
; gives 9000=01,05,EE

    LXI H,9000
    MVI B,0
    MOV C,M    ; BC is how many
    INR M      ; soon there is one more
    DAD B      ; HL points to the last number
    MOV A,C
    ORA A
    JZ FRONT   ; nothing to move
MOVE:
    MOV A,M
    INX H
    MOV M,A    ; one place up
    DCX H
    DCX H      ; to the number before it
    DCR C
    JNZ MOVE
FRONT:
    LDA 9100
    STA 9001
    HLT
