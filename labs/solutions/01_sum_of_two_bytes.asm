; Lab 1, the sum of two bytes, solved
;
; ADD sets CY and Z. STA and HLT leave them
; alone.
;
; given [two small numbers] 9000=12,34
; gives 9100=46, CY=0, Z=0
; given [as much as a byte can hold] 9000=F0,0F
; gives 9100=FF, CY=0, Z=0
; given [more than that] 9000=C8,64
; gives 9100=2C, CY=1, Z=0
; given [just one more] 9000=FF,01
; gives 9100=00, CY=1, Z=1
; given [nothing and nothing] 9000=00,00
; gives 9100=00, CY=0, Z=1

    LDA 9000   ; the first number
    MOV B,A    ; B keeps it
    LDA 9001   ; the second number
    ADD B      ; A is the sum
    STA 9100
    HLT
