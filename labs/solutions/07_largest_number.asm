; Lab 7, the largest number, solved
;
;   A   the largest number so far
;   B   how many numbers are left
;   DE  its address
;   HL  the address of the number looked at
;
; given [five numbers] 9000=05,11,07,2A,03,19
; gives 9100=2A,03,90
; given [the first one] 9000=03,FF,10,00
; gives 9100=FF,01,90
; given [the last one] 9000=03,01,7F,80
; gives 9100=80,03,90
; given [twice the same] 9000=04,05,60,60,01
; gives 9100=60,02,90
; given [one number] 9000=01,00,63
; gives 9100=00,01,90
; given [no number] 9000=00,63, 9100=55,55,55
; gives 9100=00,00,00

    LXI H,9000
    LXI D,0    ; the address for an empty list
    MOV A,M    ; how many numbers
    ORA A
    JZ DONE    ; none, and A is 0 already
    MOV B,A
    INX H      ; to the first number
TAKE:
    MOV A,M    ; the largest so far
    MOV D,H    ; and where it stands
    MOV E,L
NEXT:
    DCR B
    JZ DONE
    INX H
    CMP M      ; CY if A is below this number
    JC TAKE
    JMP NEXT
DONE:
    STA 9100
    XCHG       ; HL is the address
    SHLD 9101
    HLT
