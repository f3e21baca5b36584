; Port echo
;
; Reads the byte at port 01 and writes it to
; port 02, and its complement to port 03. Type a
; byte at port 01 in the memory panel, run the
; program, and look at the ports 02 and 03. With
; 00 at port 01 it sends 2A there itself, to
; have something to echo. That works because a
; port is a latch, a byte that keeps what was
; last written to it.

    IN 01      ; A is the byte at port 01
    ORA A      ; only sets Z if A is 0
    JNZ ECHO   ; not 0, you have put one
    MVI A,2A
    OUT 01     ; it was 0, so write 2A to the port
ECHO:
    IN 01
    OUT 02     ; the echo
    CMA        ; turns all bits of A around
    OUT 03     ; 2A becomes D5
    HLT

; gives port 2=2A,D5
; given [a byte of yours] port 1=17
; gives port 2=17,E8
