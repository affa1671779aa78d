/* An update, as host and product run it over a wire that loses, doubles, delays and damages messages,
 * with power that may fail before every write to the product's memory. README.md says how to check it.
 *
 *   SUCCESS   the host speaks of success only when the product holds the image, valid and undamaged;
 *   VALID     code is never marked valid while it is erased, partly written or not the image's;
 *   RECOVERY  once the faults have stopped, one more run succeeds, whatever the first one left behind.
 *
 * N (data messages of the image) and RETRIES (of one message) are given by model/check.
 */

/* Messages by number: data messages are 0 to N-1, then come these. All acknowledgements are ACK. */
#define FILECHECK N
#define CLOSING   (N + 1)
#define VERSION   (N + 2)
#define STORED    (N + 3)
#define CALC      (N + 4)
#define ACK       (N + 5)
#define NOTHING   255

mtype = { sound, garbled, changed,  /* a message to the product: damage is noticed, or it is not */
          good, bad, failed,        /* an acknowledgement */
          image, factory, other,    /* an answer: that of the image, of the factory's code, or neither */
          silence };

chan toProduct = [2] of { byte, mtype };
chan toHost    = [2] of { byte, mtype };

bool faults = true;      /* wire and power may still fail */
bool sameVersion;        /* the product has the image's version already */

/* The product's memory, which outlives a loss of power. */
bool valid = true, imageVersion = false, imageChecksum = false;
bool isImage = false;    /* the code is the image's, or the beginning of it; not the factory's */
byte held = 0;           /* data messages written whole */
bool partly = false;     /* an erasure or a data message was cut short */
bool damaged = false;    /* a bit of the code is wrong */

/* Its session, which a loss of power ends. */
bool running = false, checked = false;
byte next = 0, lastTaken = NOTHING;
mtype lastForm = silence;

#define codeIsWhole ((held == N || !isImage) && !partly && !damaged)
#define holdsImage  (isImage && codeIsWhole)

inline restart() { running = false; checked = false; next = 0; lastTaken = NOTHING; lastForm = silence }
inline write()   { printf("write\n"); if :: faults && !cut -> printf("cut\n"); cut = true; restart() :: true fi }
#define ifPower(statement) if :: !cut -> statement :: else fi

inline erase() {
  write();
  ifPower(valid = false);
  write(); ifPower(partly = true; isImage = true; held = 0; damaged = false);
  write(); ifPower(partly = false)
}

inline append() {
  write(); ifPower(partly = true);
  write(); ifPower(partly = false; held++; damaged = (damaged || form == changed))
}

inline seal() {
  write(); ifPower(imageVersion = true);
  write(); ifPower(imageChecksum = true);
  write(); ifPower(valid = true; running = false; checked = false; assert(holdsImage))  /* VALID */
}

inline takeData() {
  if
  :: number == 0 || (running && !checked && number == next) ->
     if :: number == 0 -> erase() :: else fi;
     if :: !cut -> append() :: else fi;
     ifPower(running = true; checked = false; next = number + 1; status = good)
  :: else -> status = failed
  fi
}

inline take() {
  if
  :: form == garbled -> status = bad
  :: form != garbled && number != 0 && number == lastTaken && form == lastForm -> status = good
  :: else ->
     if
     :: number < N -> takeData()
     :: number == FILECHECK && running && holdsImage -> checked = true; status = good
     :: number == CLOSING && checked -> seal(); status = good
     :: else -> status = failed
     fi;
     if
     :: cut -> skip
     :: !cut && status == good -> lastTaken = number; lastForm = form
     :: !cut && status == failed -> restart()
     fi
  fi;
  assert(!valid || (!partly && (!isImage || (held == N && imageVersion && imageChecksum)))); /* VALID */
  if
  :: faults && status == good && number != FILECHECK -> printf("cell\n"); damaged = true /* it fails later */
  :: true
  fi
}

inline answer(n, what) {
  printf("answer %d\n", n);
  if
  :: nfull(toHost) -> toHost!n,what
  :: faults || full(toHost) -> printf("lose\n")
  :: faults && empty(toHost) -> toHost!n,what; toHost!n,what; printf("double\n")
  :: faults && n == ACK && nfull(toHost) ->
     if :: toHost!n,good; printf("false 0\n") :: toHost!n,bad; printf("false 1\n")
     :: toHost!n,failed; printf("false 2\n") fi
  :: faults && n != ACK && nfull(toHost) -> toHost!n,other; printf("other\n")
  fi
}

inline tell(n, knows, ofImage) {
  if
  :: knows && ofImage -> answer(n, image)
  :: knows && !ofImage -> answer(n, factory)
  :: !knows -> answer(n, other)
  fi
}

active proctype product() {
  byte number; mtype form, status; bool cut;
end:
  do
  :: atomic {
       toProduct?number,form ->
       printf("take %d\n", number); cut = false; status = bad;
       if
       :: number <= CLOSING -> take(); if :: !cut -> answer(ACK, status) :: else fi
       :: number > CLOSING && form != sound -> skip
       :: number == VERSION && form == sound -> tell(VERSION, valid, (sameVersion || imageVersion))
       :: number == STORED && form == sound -> tell(STORED, valid, imageChecksum)
       :: number == CALC && form == sound -> tell(CALC, codeIsWhole, isImage)
       fi;
       number = 0; form = sound; status = bad; cut = false
     }
  od
}

inline send(n) {
  atomic {
    do :: toHost?kind,got -> printf("hear\n") :: empty(toHost) -> break od; /* old input */
    printf("send %d\n", n);
    if
    :: nfull(toProduct) -> toProduct!n,sound
    :: faults || full(toProduct) -> printf("lose\n")
    :: faults && empty(toProduct) -> toProduct!n,sound; toProduct!n,sound; printf("double\n")
    :: faults && nfull(toProduct) -> toProduct!n,garbled; printf("garble\n")
    :: faults && nfull(toProduct) && n < N -> toProduct!n,changed; printf("change\n")
    fi
  }
}

/* While there are faults, an answer may be late: then the wait ends before it comes. */
#define quiet (empty(toProduct) && empty(toHost))

inline await(n) {
  do
  :: atomic { toHost?kind,got -> printf("hear\n"); if :: kind == n -> break :: else fi }
  :: atomic { faults || quiet -> printf("silence\n"); got = silence; break }
  od
}

inline exchange(n, reply, again) {
  tries = 0;
  do
  :: send(n); await(reply); if :: again && tries < RETRIES -> tries++ :: else -> break fi
  od
}

inline ask(n) { exchange(n, n, (got != image)); proven = proven && got == image }

inline update() {
  do :: toHost?kind,got :: quiet -> break od; /* a second of silence before the first message */
  step = 0; proven = true; got = good;
  do
  :: step <= CLOSING && got == good -> exchange(step, ACK, (got == silence || got == bad)); step++
  :: else -> break
  od;
  proven = (got == good);
  if :: proven -> ask(VERSION); ask(STORED); ask(CALC) :: else fi;
  kind = 0; tries = 0; step = 0; got = silence
}

active proctype host() {
  byte step, tries, kind; mtype got = silence; bool proven;
  if :: sameVersion = true; printf("same version\n") :: sameVersion = false fi;
  update();
  assert(!proven || (valid && holdsImage));                                  /* SUCCESS */
  faults = false;
  update();
  assert(proven && valid && holdsImage)                                      /* RECOVERY */
}
