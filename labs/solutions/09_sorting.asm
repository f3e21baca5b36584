; Lab 9, sorting, solved
;
;   B   the pairs to come in this pass
;   C   the pairs of the whole pass
;   HL  the address of a number
;
; A list of n numbers has n-1 pairs of
; neighbours. Each pass brings the smallest to
; the end, so the next one has a pair less.
;
; given [five numbers] 9000=05,42,07,FF,00,13
; gives 9001=FF,42,13,07,00
; given [two the same] 9000=04,42,13,42,07
; gives 9001=42,42,13,07
; given [the smallest first] 9000=04,01,02,03,80
; gives 9001=80,03,02,01
; given [in order already] 9000=03,30,20,10,EE
; gives 9001=30,20,10,EE
; given [two numbers] 9000=02,11,22,EE
; gives 9001=22,11,EE
; given [one number] 9000=01,2A,EE
; gives 9001=2A,EE
; given [no number] 9000=00,2A,EE
; gives 9001=2A,EE

    LDA 9000
    CPI 2
    JC DONE    ; fewer than two, no pair
    DCR A
    MOV C,A
PASS:
    LXI H,9001
    MOV B,C
PAIR:
    MOV A,M    ; the left number
    INX H
    CMP M      ; CY if it is below the right one
    JNC ORDERED
    MOV D,M    ; swap the two
    MOV M,A
    DCX H
    MOV M,D
    INX H
ORDERED:
    DCR B
    JNZ PAIR
    DCR C
    JNZ PASS
DONE:
    HLT
