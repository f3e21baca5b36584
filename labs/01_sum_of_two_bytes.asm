; Lab 1, the sum of two bytes
;
; Aim
;   Fetch two numbers from memory, add them, and
;   store the sum.
; Before
;   9000  the first number
;   9001  the second number
; After
;   9100  their sum, or its low byte if above FF
;   CY    1 if the sum is above FF, else 0
;   Z     1 if 9100 is 00, else 0
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

; Your program

    HLT

; Hint
;   LDA brings a byte from memory to A. But ADD
;   needs the other number in a register, so one
;   of them has to move out of A. STA changes no
;   flag, so CY and Z stay as ADD leaves them.
