; Lab 10, a delay, solved
;
;   B  the milliseconds to go
;   C  the rounds of the inner loop to go
;
; The inner loop takes 220 times 14 T-states,
; less 3 for the last JNZ, which does not jump.
; That is 3077. With 7 for MVI and 14 for the
; outer loop a millisecond has 3098.
;
; given [1 millisecond] 9000=01
; gives 9100=FF
; gives T-states >= 3077, T-states <= 3238
; given [10 milliseconds] 9000=0A
; gives 9100=FF
; gives T-states >= 30770, T-states <= 31485
; given [255 milliseconds] 9000=FF
; gives 9100=FF
; gives T-states >= 784635, T-states <= 800427
; given [no time at all] 9000=00
; gives 9100=FF, T-states <= 100

    LDA 9000
    ORA A
    JZ OVER
    MOV B,A
MILLI:
    MVI C,0DC  ; 220 in decimal
WAIT:
    DCR C
    JNZ WAIT
    DCR B
    JNZ MILLI
OVER:
    MVI A,0FF
    STA 9100
    HLT
