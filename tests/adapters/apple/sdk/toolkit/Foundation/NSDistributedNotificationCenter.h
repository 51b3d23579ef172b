// Its class is in this folder's Foundation.h.
#import <Foundation/Foundation.h>
